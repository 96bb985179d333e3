#pragma once

#include "foundation/JobxExport.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/CStringArray.h"
#include "reading/CJOBXreading.h"

class CJOBXSpecialSymbolArray;
class CJOBXfonts;
class CJOBXmatrix;
class CJOBXmisc;
class CJOBXsteps;
class CJOBXsysAttrDataArray;
class CWnd;

// One ODB++ job: its font, matrix, job information, steps, user symbols and system attributes, read from a job
// directory, changed by the host, and written as a fresh directory tree.
// Units:     every length stays in the unit of the file it came from until UnitConvert multiplies it.
// Ownership: owns and deletes what m_pFonts, m_pMatrix, m_pMisc, m_pSteps, m_pSpecialSymbols and m_pSysAttrs point to.
//            A copy shares all of it with its source, and so does an assigned object: intended, and the host must let
//            only one of the two be destroyed. The windows, m_pProgress and m_pStatus, are borrowed.
// Results:   readers answer 1 for done and 0 when the job has no "steps" or no "matrix" directory or its matrix cannot
//            be read; the message "There is no ODB Data!" is shown then. They add to what was read before. A missing
//            part of a job is no error; complete reading reports it, see CJOBXreading. Exhausted memory raises CMemoryException; what was read until then stays. Names
//            below the job directory are found whatever their letter case.
// Threads:   one thread calls; symbols and layers are read and files are written on a team of worker threads.
class JOBX_API CJOBX : public CRaisingNew
{
public:
    // Loads the font at once when a file named "standard" is in the current directory.
    CJOBX();
    CJOBX(const CJOBX& other);
    CJOBX& operator=(const CJOBX& other);
    virtual ~CJOBX();

    // How the reading operations below read; classic unless set. The setting is no part of what is read: it stays.
    void SetReading(const CJOBXreading& reading) { m_reading = reading; }
    const CJOBXreading& GetReading() const noexcept { return m_reading; }

    // Reads only the matrix. `stepNames` gets the names of the job's steps in matrix order; after a failure it is as
    // before.
    int ParseMatrixInODBOfMFC(CString jobPath, CStringArray& stepNames);
    // Reads the whole job: the matrix, the user symbols, every step of the matrix, the font and the job information.
    int ParseODBOfMFC(CString jobPath);
    // Reads the job with the named steps only, and without its matrix; meant to follow ParseMatrixInODBOfMFC on the
    // same object. Answers 1 always.
    int ParseODBOfMFC(CString jobPath, CStringArray& stepNames);
    // Appends the attribute definitions of a file; one that cannot be opened does nothing. A malformed definition
    // raises CInvalidArgException, the definitions before it stay.
    void ParseODBsysAttrDataArray(CString filePath);

    // Writes the job as a fresh directory tree named as the job below `outputDirectory`: one that is there is deleted
    // first, with everything in it. The EDA data and netlists only when `withEda` is not 0. The job information and the
    // system attributes are not written; the font only when a file named "standard" is in the current directory.
    // Nothing outside that directory is made or deleted whatever names the job holds: an empty name, "." or "..", or
    // one with a separator writes nothing. Nothing is reported but to the diagnostics.
    void WriteODBData(CString outputDirectory, int withEda);

    // Puts steps that repeat other steps before the plain ones. No step is copied or deleted.
    void RebuildStepObj();
    // The position of the first user symbol whose name in upper case equals `upperName`; -1 when there is none. A name
    // with a lower-case letter is never found.
    int FindSpecialSymbolID(const CString& upperName) const;
    // The n-th blank-separated column of a line, counted from 1; "" for 0. A column that the line does not have raises
    // CInvalidArgException.
    CString GetNthColumn(CString line, int n) const;
    // Multiplies every length of the font, the steps and the user symbols by `factor`.
    void UnitConvert(const double& factor);
    // Names the job; the writer makes a directory of that name.
    void SetODBProjectName(CString name);

    int m_nVersionMajor = 6;
    int m_nVersionMinor = 0;
    CString m_sName; // the last component of the job directory, once read
    CJOBXfonts* m_pFonts = nullptr;
    CJOBXmatrix* m_pMatrix = nullptr;
    CJOBXmisc* m_pMisc = nullptr;
    CJOBXsteps* m_pSteps = nullptr;
    CJOBXSpecialSymbolArray* m_pSpecialSymbols = nullptr;
    CJOBXsysAttrDataArray* m_pSysAttrs = nullptr;
    CWnd* m_pProgress = nullptr; // the host's progress bar; set before reading to get reports
    CWnd* m_pStatus = nullptr;   // the host's status text

private:
    int ReadMatrix(const CString& jobPath);
    void ReadParts(const CString& jobPath, const CStringArray& stepNames, bool wholeJob);
    void ReadSymbols(const CString& jobPath, bool wholeJob);
    void ShowSymbolsRead();
    void TakeWindowsBack();
    void ReadStepsFontAndInfo(const CString& jobPath, const CStringArray& stepNames);

    CJOBXreading m_reading;
    CWnd* m_pLentProgress = nullptr; // the windows that the steps got from this object
    CWnd* m_pLentStatus = nullptr;
};
