#pragma once

#include "foundation/CJOBXunit.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"

// What a job says of itself: the file "info" of the job's folder "misc". Never written.
// Units:     complete reading takes the unit of the job's files that name none from it.
// Results:   the reader returns 1, or 0 for a missing folder or file and then changes nothing; a malformed number reads
//            as 0. Exhausted memory raises CMemoryException.
// Ownership: a plain value; not copyable.
class JOBX_API CJOBXmisc : public CRaisingNew, public CJOBXmeasured
{
public:
    CJOBXmisc();
    CJOBXmisc(const CJOBXmisc&) = delete;
    CJOBXmisc& operator=(const CJOBXmisc&) = delete;
    virtual ~CJOBXmisc();

    // Takes over the values of the file "info" in this folder, its name in any letter case; what the file does not
    // name keeps its value. The units line is not read.
    int ParseODBOfMFC(const CString& miscDirectory);

    int m_nODBVersionMajor = 6;
    int m_nODBVersionMinor = 0;
    CString m_sJobName;
    CString m_sODBSource;
    CString m_sCreationDate; // dates as the file spells them
    CString m_sSaveDate;     // taken only from a key in upper case; intended
    CString m_sSaveApp;
    CString m_sSaveUser;
};
