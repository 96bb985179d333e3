#pragma once

#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/CStringArray.h"
#include "foundation/framework/JobxExport.h"
#include "reading/CJOBXreading.h"

#include <memory>

class CJOBXSpecialSymbolArray;
class CJOBXfonts;
class CJOBXmatrix;
class CJOBXmisc;
class CJOBXsteps;
class CJOBXsysAttrDataArray;
class CWnd;
struct CJobSource;

// One ODB++ job: font, matrix, job information, steps, user symbols and system attributes. It is read from a job
// directory, changed by the host, and written as a new directory tree.
// Units:     every length is in the unit of its file until UnitConvert multiplies it.
// Ownership: owns and deletes what m_pFonts, m_pMatrix, m_pMisc, m_pSteps, m_pSpecialSymbols and m_pSysAttrs point to.
//            A copy shares all of it with its source, and so does an assigned object; this is intended. The host must
//            make sure that only one of the two is destroyed. The windows m_pProgress and m_pStatus are borrowed.
// Results:   readers return 1, or 0 if the job has no "steps" or "matrix" directory or its matrix cannot be read. Then
//            they show the message "There is no ODB Data!". They add to what was read before. A missing part of a job
//            is not an error; complete reading reports it, see CJOBXreading. Exhausted memory raises CMemoryException
//            and keeps what was read before. Letter case of names below the job directory is ignored.
// Threads:   one thread calls; symbols and layers are read and files are written on a team of worker threads.
class JOBX_API CJOBX : public CRaisingNew
{
public:
    // Loads the font at once if the current directory contains a file "standard".
    CJOBX();
    CJOBX(const CJOBX& other);
    CJOBX& operator=(const CJOBX& other);
    virtual ~CJOBX();

    // How the operations below read; initially classic. Reading does not change the setting.
    void SetReading(const CJOBXreading& reading) { m_reading = reading; }
    const CJOBXreading& GetReading() const noexcept { return m_reading; }

    // Reads only the matrix. `stepNames` receives the names of the job's steps in matrix order. It does not change on
    // failure.
    int ParseMatrixInODBOfMFC(CString jobPath, CStringArray& stepNames);
    // Reads the whole job: the matrix, the user symbols, every step of the matrix, the font and the job information.
    int ParseODBOfMFC(CString jobPath);
    // Reads the job with the named steps only, without its matrix. Meant to follow ParseMatrixInODBOfMFC on the same
    // object. Always returns 1.
    int ParseODBOfMFC(CString jobPath, CStringArray& stepNames);
    // Appends the attribute definitions of a file; does nothing if it cannot be opened. A malformed definition raises
    // CInvalidArgException; the definitions before it are kept.
    void ParseODBsysAttrDataArray(CString filePath);

    // Writes the job as a new directory tree, in a directory of the job's name below `outputDirectory`. An existing one
    // is first deleted with everything in it. EDA data and netlists are written only if `withEda` is not 0. Job
    // information and system attributes are not written. The font is written only if the current directory contains a
    // file "standard". Nothing outside that directory is made or deleted, whatever names the job contains: an empty
    // name, "." or "..", or a name with a separator writes nothing. Only the diagnostics report failures.
    void WriteODBData(CString outputDirectory, int withEda);

    // Saves the job, which was read completely or made by the host, as the directory `outputDirectory`, which must not
    // exist or be empty; its parent must exist. Nothing is lost: what did not change since the job was read is saved to
    // the byte, with the files that the library does not read. Where something changed, only its lines differ. The
    // host may change public members freely. It need not change references to records by their numbers, such as those
    // of EDA data to features: one that has not changed since the job was read means what it meant then, one that has
    // changed means what is there now. The source of the job is read once more; it must not have changed since then,
    // unless its text was kept (CJOBXreading::bKeepText).
    // Returns 1, or 0 if the job was not saved; then there is nothing new on the disk, and the messages say why. They
    // have the codes SAV001 and following. `pSink` is borrowed and may be null.
    int SaveODBData(const CString& outputDirectory, CJOBXmessageSink* pSink = nullptr) const;

    // Moves steps that repeat other steps before the others. No step is copied or deleted.
    void RebuildStepObj();
    // The index of the first user symbol whose name in upper case equals `upperName`, -1 if there is none. A name with
    // a lower-case letter is never found.
    int FindSpecialSymbolID(const CString& upperName) const;
    // The n-th blank-separated column of a line, counted from 1; "" for 0. Raises CInvalidArgException if the line does
    // not have that column.
    CString GetNthColumn(CString line, int n) const;
    // Multiplies every length of the font, the steps and the user symbols by `factor`.
    void UnitConvert(const double& factor);
    // Sets the job's name, which is also the name of the directory that the writer makes.
    void SetODBProjectName(CString name);

    int m_nVersionMajor = 6;
    int m_nVersionMinor = 0;
    CString m_sName; // after a read, the last component of the job's path
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

    void NoteClassicReading();
    CJobSource& StartCompleteReading(const CString& jobPath, bool ofMatrix);

    CJOBXreading m_reading;
    std::shared_ptr<CJobSource> m_pSource; // of a complete reading; of a classic one it has nothing
    CWnd* m_pLentProgress = nullptr;       // the windows that this object gave to the steps
    CWnd* m_pLentStatus = nullptr;
};
