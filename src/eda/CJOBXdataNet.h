#pragma once

#include "eda/CJOBXSnt.h"
#include "foundation/CJOBXProperty.h"
#include "foundation/CJOBXsourced.h"
#include "foundation/CJOBXtailed.h"

// A net: its name and its subnets.
// Ownership: owned by its array, owns its subnets and properties; not copyable.
class JOBX_API CJOBXdataNet : public CJOBXrecord, public CJOBXtailed, public CJOBXsourced
{
public:
    CJOBXdataNet() = default;
    CJOBXdataNet(const CJOBXdataNet&) = delete;
    CJOBXdataNet& operator=(const CJOBXdataNet&) = delete;
    virtual ~CJOBXdataNet();

    // Writes the net's name line, with a blank after the name, and its subnets. Does nothing for a null file.
    void WriteODBData(std::FILE* file) const;

    int m_nNumber = -1; // from the "# NET" line above it; -1 if there is none
    int m_nFlag = 0;    // for the host; never set here
    CJOBXSntArray m_arrSnts;
    CString m_sName;
    CJOBXPropertyArray m_arrProperties;
};

extern template class JOBX_API CExPtrArray<CJOBXdataNet*, CJOBXdataNet*>;

// The nets of a step in file order; owns them.
// Results:   lookups are case-sensitive and return the first match. Those by name replace every blank in the given name
//            by "_", so a net whose name contains a blank is never found.
class JOBX_API CJOBXdataNetArray : public COwningPtrArray<CJOBXdataNet>
{
public:
    CJOBXdataNetArray() = default;
    ~CJOBXdataNetArray() override;

    // The net with that number or name, null if there is none.
    CJOBXdataNet* GetNetData(int number) const;
    CJOBXdataNet* GetNetData(const CString& name) const;
    // The index of the net with that name. The first net is skipped, so 0 means either that net or no net; this is
    // intended.
    __int64 FindNetID(CString name) const;
    // Writes a comment with its index and its lines for every net. Does nothing for a null file.
    void WriteODBData(std::FILE* file) const;
};
