#pragma once

#include "eda/CJOBXSnt.h"
#include "foundation/CJOBXProperty.h"

// A net: its name and its subnets.
// Ownership: owned by its array, owns its subnets and properties; not copyable.
class JOBX_API CJOBXdataNet : public CPooledRecord
{
public:
    CJOBXdataNet() = default;
    CJOBXdataNet(const CJOBXdataNet&) = delete;
    CJOBXdataNet& operator=(const CJOBXdataNet&) = delete;
    virtual ~CJOBXdataNet();

    // The net's name line, with a blank behind the name, and its subnets. A null file writes nothing.
    void WriteODBData(std::FILE* file) const;

    int m_nNumber = -1; // from the "# NET" line before it; -1 for a net without one
    CJOBXSntArray m_arrSnts;
    int m_nFlag = 0; // nothing here sets it; for the host
    CString m_sName;
    CJOBXPropertyArray m_arrProperties;
};

extern template class JOBX_API CExPtrArray<CJOBXdataNet*, CJOBXdataNet*>;

// The nets of a step in file order; owns them.
// Results: lookups compare exactly, letter case included; the first match wins. Those by name first put "_" for every
//          blank of the name asked for, so a net whose own name holds a blank is never found.
class JOBX_API CJOBXdataNetArray : public COwningPtrArray<CJOBXdataNet>
{
public:
    CJOBXdataNetArray() = default;
    ~CJOBXdataNetArray() override;

    // The net with that number or name; null when there is none.
    CJOBXdataNet* GetNetData(int number) const;
    CJOBXdataNet* GetNetData(const CString& name) const;
    // The position of the net with that name. The first net is passed over, which is intended: 0 answers for it as for
    // a name that is absent.
    __int64 FindNetID(CString name) const;
    // For every net a comment with its position, then its lines. A null file writes nothing.
    void WriteODBData(std::FILE* file) const;
};
