#include "job/CJOBX.h"

#include "foundation/ParallelLoop.h"
#include "foundation/ProgressReport.h"
#include "foundation/corekit/CKUtility.h"
#include "foundation/corekit/EntryLookup.h"
#include "foundation/corekit/FreshDirectory.h"
#include "foundation/corekit/SystemEntries.h"
#include "foundation/corekit/TextTools.h"
#include "foundation/framework/Guarded.h"
#include "job/CJOBXmatrix.h"
#include "job/CJOBXmisc.h"
#include "job/CJOBXsteps.h"
#include "job/CJOBXsysAttrData.h"
#include "job/JobReader.h"
#include "job/JobSaver.h"
#include "layer/CJOBXSpecialSymbol.h"
#include "layer/CJOBXfonts.h"
#include "step/CJOBXstephdr.h"
#include "step/StepWrites.h"

#include <algorithm>
#include <iterator>
#include <list>
#include <memory>

namespace
{
constexpr double kFontSize = 0.302;
constexpr int kSymbolsRead = 20; // progress bar position after reading the symbols
constexpr UINT kExclamation = 48;

// The parts of a path for GetSegmntFromFilePath.
constexpr int kDirectory = 1;
constexpr int kLastComponent = 2;

int ReportNoData()
{
    MessageBoxA(nullptr, "There is no ODB Data!", "WARNING", kExclamation);
    return 0;
}

CStringArray StepNames(const CJOBXmatrix& matrix)
{
    CStringArray names;
    for (const CJOBXmatrixStep& step : matrix.m_arrSteps.Records())
        names.Add(step.m_sName);
    return names;
}

// The features files below "symbols", including entries that are not files. The test looks at the whole path, including
// the part above the job. Compressed files are decompressed beside themselves, all of them before the first is read,
// because the plain file of the same name may also be in the list.
CStringArray SymbolFeaturesFiles(const CStringArray& paths)
{
    CStringArray featuresFiles;
    for (INT_PTR i = 0; i < paths.GetSize(); ++i)
    {
        const CString& path = paths[i];
        const CString upper = MakeUpper(path);
        if (upper.Find("FEATURES") < 0 || upper.Find(".SUM") >= 0)
            continue;
        const int suffix = upper.Find(".Z");
        if (suffix >= 0)
            CKUtility::GetInstance()->GDecompress(path);
        featuresFiles.Add(suffix >= 0 ? path.Left(suffix) : path);
    }
    return featuresFiles;
}

// The path with "symbols" spelled as the library spells it, whatever its spelling on disk.
CString SpelledAsSymbols(const CString& path, const CString& symbolsOnDisk, const CString& jobPath)
{
    const CString symbols = CKUtility::GetInstance()->CKPathCombine(jobPath, "symbols", __FILE__, __LINE__);
    return path.View().starts_with(symbolsOnDisk.View()) ? symbols + path.Mid(symbolsOnDisk.GetLength()) : path;
}

// `path` is the file's path that the model keeps.
std::unique_ptr<CJOBXSpecialSymbol> ReadSymbol(const CString& featuresFile, const CString& path, bool wholeJob)
{
    CKUtility* const files = CKUtility::GetInstance();
    auto symbol = std::make_unique<CJOBXSpecialSymbol>();
    symbol->m_sPath = files->GetSegmntFromFilePath(path, kDirectory);
    // Reading the whole job names a symbol by the path of its directory: intended, hosts rely on it.
    symbol->m_sName = wholeJob ? symbol->m_sPath : files->GetSegmntFromFilePath(symbol->m_sPath, kLastComponent);
    symbol->GetLayer()->ParseODBOfMFC(featuresFile);
    return symbol;
}

bool Repeats(const CJOBXstepObj& step, const CString& upperName)
{
    const CJOBXstepRepeatArray& repeats = step.GetHeader()->m_arrStepRepeats;
    for (const CJOBXstepRepeat& entry : repeats.Records())
        if (MakeUpper(entry.m_sName) == upperName)
            return true;
    return false;
}

void AddSymbolWrites(CWriteTasks& tasks, const CJOBXSpecialSymbolArray& symbols, const CString& jobDirectory)
{
    for (const CJOBXSpecialSymbol& symbol : symbols.Records())
    {
        if (!IsEntryName(symbol.m_sName))
            tasks.Run(); // the name may lead to the place of another symbol's file
        // Beside "steps", not in "symbols"; intended.
        const CString folder = tasks.MakeFreshDirectory(jobDirectory, symbol.m_sName, __FILE__, __LINE__);
        const CJOBXlayer* const layer = symbol.GetLayer();
        if (!folder.IsEmpty())
            tasks.Add(layer->GetFeatures()->GetSize(), [layer, folder] { layer->WriteODBData(folder, 0, 1); });
    }
}
} // namespace

CJOBX::CJOBX()
{
    Guarded(
        [this]
        {
            auto fonts = std::make_unique<CJOBXfonts>();
            auto matrix = std::make_unique<CJOBXmatrix>();
            auto misc = std::make_unique<CJOBXmisc>();
            auto steps = std::make_unique<CJOBXsteps>();
            auto symbols = std::make_unique<CJOBXSpecialSymbolArray>();
            auto sysAttrs = std::make_unique<CJOBXsysAttrDataArray>();
            fonts->m_dXSize = kFontSize;
            fonts->m_dYSize = kFontSize;
            fonts->m_dOffset = 0.0;
            if (CKUtility::GetInstance()->DoesFileExist("standard", __FILE__, __LINE__))
                fonts->ParseStandardFont("./");
            m_pFonts = fonts.release();
            m_pMatrix = matrix.release();
            m_pMisc = misc.release();
            m_pSteps = steps.release();
            m_pSpecialSymbols = symbols.release();
            m_pSysAttrs = sysAttrs.release();
        });
}

CJOBX::CJOBX(const CJOBX& other) = default;

CJOBX& CJOBX::operator=(const CJOBX& other) = default;

CJOBX::~CJOBX()
{
    delete m_pFonts;
    delete m_pMatrix;
    delete m_pMisc;
    delete m_pSteps;
    delete m_pSpecialSymbols;
    delete m_pSysAttrs;
}

int CJOBX::ParseMatrixInODBOfMFC(CString jobPath, CStringArray& stepNames)
{
    return Guarded(
        [&]
        {
            if (ReadMatrix(jobPath) == 0)
                return ReportNoData();
            stepNames = StepNames(*m_pMatrix);
            return 1;
        });
}

int CJOBX::ParseODBOfMFC(CString jobPath)
{
    return Guarded(
        [&]
        {
            if (ReadMatrix(jobPath) == 0)
                return ReportNoData();
            ReadParts(jobPath, StepNames(*m_pMatrix), true);
            return 1;
        });
}

int CJOBX::ParseODBOfMFC(CString jobPath, CStringArray& stepNames)
{
    return Guarded(
        [&]
        {
            m_sName = CKUtility::GetInstance()->GetSegmntFromFilePath(jobPath, kLastComponent);
            ReadParts(jobPath, stepNames, false);
            return 1;
        });
}

int CJOBX::ReadMatrix(const CString& jobPath)
{
    m_sName = CKUtility::GetInstance()->GetSegmntFromFilePath(jobPath, kLastComponent);
    if (m_reading.IsComplete())
        return CJobReading(*this, StartCompleteReading(jobPath, true), jobPath).ReadMatrix() ? 1 : 0;
    NoteClassicReading();
    const CString matrix = FindEntry(jobPath, "matrix");
    return IsEntryThere(FindEntry(jobPath, "steps")) && IsEntryThere(matrix) ? m_pMatrix->ParseODBOfMFC(matrix) : 0;
}

// The same job is read in one or two stages: its matrix, and everything else.
CJobSource& CJOBX::StartCompleteReading(const CString& jobPath, bool ofMatrix)
{
    std::string real;
    const CString directory = ResolveLinks(jobPath, real) == 0 ? CString(std::string_view(real)) : jobPath;
    const auto hasStage = [this, ofMatrix] { return ofMatrix ? m_pSource->hasMatrix : m_pSource->hasParts; };
    const bool isMixed = m_pSource != nullptr && (hasStage() || m_pSource->directory != directory);
    if (m_pSource == nullptr || isMixed)
    {
        m_pSource = std::make_shared<CJobSource>();
        m_pSource->directory = directory;
        m_pSource->isMixed = isMixed;
    }
    (ofMatrix ? m_pSource->hasMatrix : m_pSource->hasParts) = true;
    return *m_pSource;
}

// Such a job cannot be saved.
void CJOBX::NoteClassicReading()
{
    m_pSource = std::make_shared<CJobSource>();
    m_pSource->isMixed = true;
}

void CJOBX::ReadParts(const CString& jobPath, const CStringArray& stepNames, bool wholeJob)
{
    if (m_reading.IsComplete())
    {
        CJobSource& source = StartCompleteReading(jobPath, false);
        for (INT_PTR i = 0; i < stepNames.GetSize(); ++i)
            source.steps.push_back(stepNames[i]);
        CJobReading reading(*this, source, jobPath);
        reading.ReadInfoAndSymbols();
        ShowSymbolsRead();
        reading.ReadStepsAndFont(stepNames);
        return;
    }
    NoteClassicReading();
    ReadSymbols(jobPath, wholeJob);
    ShowSymbolsRead();
    ReadStepsFontAndInfo(jobPath, stepNames);
}

void CJOBX::ReadSymbols(const CString& jobPath, bool wholeJob)
{
    const CString symbols = FindEntry(jobPath, "symbols");
    if (IsEntryThere(symbols))
    {
        CStringArray paths;
        CKUtility::GetInstance()->GetAllFileListIn(symbols, paths, "*.*", 1);
        const CStringArray featuresFiles = SymbolFeaturesFiles(paths);
        CParallelAppend<CJOBXSpecialSymbol> finished(*m_pSpecialSymbols);
        ParallelLoop(static_cast<int>(featuresFiles.GetSize()),
                     [&](int i)
                     {
                         const CString& file = featuresFiles[i];
                         if (CKUtility::GetInstance()->IsFile(file))
                             finished.Append(i, ReadSymbol(file, SpelledAsSymbols(file, symbols, jobPath), wholeJob));
                     });
        finished.PutInOrder();
    }
}

void CJOBX::ShowSymbolsRead()
{
    TakeWindowsBack();
    if (m_pProgress == nullptr)
        return;
    SetPosition(*m_pProgress, kSymbolsRead);
    m_pProgress->UpdateData(FALSE);
    m_pProgress->SetFocus();
    ShowStatus(m_pStatus, "Complete symbol file reading.");
    m_pSteps->m_pProgress = m_pLentProgress = m_pProgress;
    m_pSteps->m_pStatus = m_pLentStatus = m_pStatus;
}

// A window of an earlier read may no longer exist. One that the host set itself is kept.
void CJOBX::TakeWindowsBack()
{
    if (m_pSteps->m_pProgress == m_pLentProgress)
        m_pSteps->m_pProgress = nullptr;
    if (m_pSteps->m_pStatus == m_pLentStatus)
        m_pSteps->m_pStatus = nullptr;
    m_pLentProgress = nullptr;
    m_pLentStatus = nullptr;
}

void CJOBX::ReadStepsFontAndInfo(const CString& jobPath, const CStringArray& stepNames)
{
    m_pSteps->ParseODBOfMFC(FindEntry(jobPath, "steps"), stepNames);
    m_pFonts->ParseStandardFont(FindEntry(jobPath, "fonts"));
    m_pMisc->ParseODBOfMFC(FindEntry(jobPath, "misc"));
}

void CJOBX::ParseODBsysAttrDataArray(CString filePath)
{
    m_pSysAttrs->ParseODBOfMFC(filePath);
}

void CJOBX::WriteODBData(CString outputDirectory, int withEda)
{
    Guarded(
        [&]
        {
            const CString job =
                IsEntryName(m_sName) ? MakeFreshDirectory(outputDirectory, m_sName, __FILE__, __LINE__) : CString();
            if (job.IsEmpty())
                return;
            CWriteTasks tasks;
            tasks.Add(0,
                      [&]
                      {
                          m_pFonts->WriteStandardFont(job);
                          m_pMatrix->WriteODBData(job);
                          MakeFreshDirectory(job, "misc", __FILE__, __LINE__);
                      });
            if (const CString steps = tasks.MakeFreshDirectory(job, "steps", __FILE__, __LINE__); !steps.IsEmpty())
                AddStepWrites(tasks, m_pSteps->m_arrSteps, steps, withEda);
            tasks.Add(0,
                      [&]
                      {
                          for (const char* const name :
                               {"symbols", "input", "ext", "output", "stackups", "user", "whltemps", "wheels"})
                              MakeFreshDirectory(job, name, __FILE__, __LINE__);
                      });
            tasks.Run();
            AddSymbolWrites(tasks, *m_pSpecialSymbols, job);
            tasks.Run();
        });
}

int CJOBX::SaveODBData(const CString& outputDirectory, CJOBXmessageSink* pSink) const
{
    return Guarded(
        [&]
        {
            CJOBXreading reading = m_reading;
            reading.way = JOBXway::Complete;
            reading.pSink = nullptr;
            reading.bKeepText = false;
            const auto readAgain = [&](const CString& directory, CJOBX& before) -> const CJobSource&
            {
                before.SetReading(reading);
                if (m_pSource->hasMatrix)
                    before.ReadMatrix(directory);
                CStringArray steps;
                for (const CString& step : m_pSource->steps)
                    steps.Add(step);
                before.ReadParts(directory, steps, m_pSource->hasMatrix);
                return *before.m_pSource;
            };
            CJOBXreading telling = reading;
            telling.pSink = pSink;
            return SaveJob({*this, m_pSource.get(), readAgain}, outputDirectory, telling) ? 1 : 0;
        });
}

void CJOBX::RebuildStepObj()
{
    Guarded(
        [this]
        {
            CJOBXstepObjArray& steps = m_pSteps->m_arrSteps;
            std::list<CJOBXstepObj*> placed;
            for (__int64 i = 0; i < steps.GetSize(); ++i)
            {
                CJOBXstepObj* const step = steps.GetAt(i);
                if (step == nullptr || step->GetHeader()->m_arrStepRepeats.GetSize() == 0)
                {
                    placed.push_back(step);
                    continue;
                }
                const CString upperName = MakeUpper(step->m_sName);
                auto before = std::find_if(placed.begin(), placed.end(),
                                           [&](const CJOBXstepObj* other)
                                           { return other != nullptr && Repeats(*other, upperName); });
                placed.insert(before != placed.end() ? std::next(before) : placed.begin(), step);
            }
            __int64 at = 0;
            for (CJOBXstepObj* const step : placed)
                steps.SetAt(at++, step);
        });
}

int CJOBX::FindSpecialSymbolID(const CString& upperName) const
{
    for (__int64 i = 0; i < m_pSpecialSymbols->GetSize(); ++i)
        if (const CJOBXSpecialSymbol* const symbol = m_pSpecialSymbols->GetAt(i);
            symbol != nullptr && MakeUpper(symbol->m_sName) == upperName)
            return static_cast<int>(i);
    return -1;
}

CString CJOBX::GetNthColumn(CString line, int n) const
{
    if (n == 0)
        return {};
    CStringArray columns;
    XTokenString(line.Trim(), " ", columns, 0, 0, 0, 1, 0);
    return columns[n - 1];
}

void CJOBX::UnitConvert(const double& factor)
{
    const double by = factor; // it may be a member of an object that is converted
    m_pFonts->UnitConvert(by);
    m_pSteps->m_arrSteps.UnitConvert(by);
    m_pSpecialSymbols->UnitConvert(by);
}

void CJOBX::SetODBProjectName(CString name)
{
    m_sName = name;
}
