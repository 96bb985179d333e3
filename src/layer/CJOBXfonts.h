#pragma once

#include "foundation/CJOBXunit.h"
#include "foundation/framework/CRaisingNew.h"
#include "layer/CJOBXfontsStandard.h"

// The job's stroke font: the file "standard" of the job's folder "fonts".
// Units:     lengths in the unit of the file; inch if it names none, whatever the unit of the job.
// Ownership: owns its characters. Not copyable.
// Results:   a malformed number reads as 0. Exhausted memory raises CMemoryException; what was read before stays.
class JOBX_API CJOBXfonts : public CRaisingNew, public CJOBXmeasured
{
public:
    CJOBXfonts();
    CJOBXfonts(const CJOBXfonts&) = delete;
    CJOBXfonts& operator=(const CJOBXfonts&) = delete;
    virtual ~CJOBXfonts();

    // Reads the file "standard" in this folder, ignoring the case of its name. Characters are appended, sizes replaced.
    // Returns 0 if there is no such folder, else 1, even if the file cannot be opened.
    int ParseStandardFont(const CString& folder);
    // Replaces the folder "fonts" of this job folder, with everything in it, by a new one. The file "standard" is
    // written into it only if the current directory contains a file of that name: intended, hosts rely on it. A folder
    // or file that cannot be made is skipped silently.
    // The written file does not read back completely: the three sizes run together on the first line, with the offset
    // under the keyword of the x size. This is intended.
    void WriteStandardFont(const CString& jobFolder) const;
    // Multiplies the sizes and every stroke's points by `factor`.
    void UnitConvert(const double& factor);

    double m_dXSize = 0.0;
    double m_dYSize = 0.0;
    double m_dOffset = 0.0;
    CJOBXfontsStandardArray m_arrCharacters;
};
