#pragma once

#include "compact/CODBSnt.h"
#include "foundation/CJOBXProperty.h"
#include "foundation/framework/CRaisingNew.h"

// A net of the compact model's EDA data: its name and its subnets. A unit change does not change it; this is intended.
// Ownership: owned by its array, owns its subnets and properties; copies are deep.
class JOBX_API CODBdataNet : public CRaisingNew
{
public:
    CODBdataNet() = default;
    CODBdataNet(const CODBdataNet&) = default;
    CODBdataNet& operator=(const CODBdataNet&) = default;
    virtual ~CODBdataNet();
    virtual CODBdataNet* clone() const; // the caller owns the copy

    int m_nNumber = -1;
    CODBSntArray m_arrSnts;
    int m_nFlag = 0; // for the host
    CString m_sName;
    CJOBXPropertyArray m_arrProperties;
};

extern template class JOBX_API CExPtrArray<CODBdataNet*, CODBdataNet*>;

// The nets of the EDA data; owns them.
class JOBX_API CODBdataNetArray : public CCopyableArray<CODBdataNet>
{
public:
    CODBdataNetArray* clone() const override; // the caller owns the copy
};
