#pragma once

#include "foundation/CJOBXProperty.h"
#include "foundation/CJOBXattributeList.h"
#include "foundation/CJOBXkeyed.h"
#include "foundation/CJOBXunit.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"
#include "job/CJOBXcarriedFile.h"

// The job information: the file "info" of the job's folder "misc", and the attribute list beside it. Never written.
// Units:     in complete reading, its unit applies to all files of the job that name none.
// Results:   the reader returns 1, or 0 for a missing folder or file and then changes nothing. A malformed number reads
//            as 0. Exhausted memory raises CMemoryException.
// Ownership: a plain value; not copyable.
class JOBX_API CJOBXmisc : public CRaisingNew, public CJOBXmeasured, public CJOBXkeyed, public CJOBXattributed
{
public:
    CJOBXmisc();
    CJOBXmisc(const CJOBXmisc&) = delete;
    CJOBXmisc& operator=(const CJOBXmisc&) = delete;
    virtual ~CJOBXmisc();

    // Reads the file "info" in this folder, ignoring the case of its name. Values that the file does not give do not
    // change. The units line is not read.
    int ParseODBOfMFC(const CString& miscDirectory);

    // The files of the whole job that no reader took; borrowed. Filled by complete reading only.
    CJOBXcarriedFileArray* GetCarriedFiles() { return &m_arrCarriedFiles; }
    const CJOBXcarriedFileArray* GetCarriedFiles() const { return &m_arrCarriedFiles; }
    // What the numbers of attributes measure, as far as their definitions in the job say so: the name of the attribute
    // and the key UNITS of its definition, such as INCH_MM; borrowed. Filled by complete reading only.
    CJOBXPropertyArray* GetAttributeUnits() { return &m_arrAttributeUnits; }
    const CJOBXPropertyArray* GetAttributeUnits() const { return &m_arrAttributeUnits; }

    int m_nODBVersionMajor = 6;
    int m_nODBVersionMinor = 0;
    CString m_sJobName;
    CString m_sODBSource;
    CString m_sCreationDate; // dates are as in the file
    CString m_sSaveDate;     // only read from an upper-case key; intended
    CString m_sSaveApp;
    CString m_sSaveUser;

private:
    CJOBXcarriedFileArray m_arrCarriedFiles;
    CJOBXPropertyArray m_arrAttributeUnits;
};
