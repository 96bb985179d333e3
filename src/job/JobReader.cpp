#include "job/JobReader.h"

#include "foundation/ParallelLoop.h"
#include "foundation/corekit/CDiagnosticCapture.h"
#include "foundation/corekit/CFileBytes.h"
#include "foundation/corekit/CKUtility.h"
#include "foundation/corekit/EntryLookup.h"
#include "foundation/corekit/SystemEntries.h"
#include "job/CJOBX.h"
#include "job/CJOBXmatrix.h"
#include "job/CJOBXmisc.h"
#include "job/CJOBXsteps.h"
#include "job/InfoFormat.h"
#include "job/InfoReader.h"
#include "job/MatrixFormat.h"
#include "job/MatrixReader.h"
#include "job/SourceTree.h"
#include "job/StepsReader.h"
#include "layer/CJOBXSpecialSymbol.h"
#include "layer/CJOBXfonts.h"
#include "layer/FeaturesReader.h"
#include "layer/FontFormat.h"
#include "layer/FontReader.h"
#include "reading/AttributeListReader.h"
#include "reading/AttributeTypesReader.h"
#include "reading/CFirstNames.h"
#include "reading/FileMessageKinds.h"
#include "reading/MatrixMessageKinds.h"
#include "reading/SystemAttributes.h"

#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace
{
constexpr char kOfComponents[] = "COMPONENT"; // a layer's type

CString NameOf(const CString& path)
{
    return CKUtility::GetInstance()->GetSegmntFromFilePath(path, 2);
}

CString Lower(CString name)
{
    return name.MakeLower();
}

CStringArray DirectoriesIn(const CString& place)
{
    CStringArray directories;
    if (CKUtility::GetInstance()->IsDir(place))
        CKUtility::GetInstance()->GetAllSubDirListIn(place, directories, 0);
    return directories;
}
} // namespace

CJobReading::CJobReading(CJOBX& job, CJobSource& source, const CString& jobPath)
    : m_target(job), m_source(source), m_job{job.GetReading(), jobPath}, m_messages(job.GetReading())
{
    m_job.taken = &m_source.taken;
}

bool CJobReading::ReadMatrix()
{
    CSourceFile file(m_context, FindEntry(m_job.directory, "matrix"), matrix_format::kMatrix, Presence::Needed);
    const CString steps = FindEntry(m_job.directory, "steps");
    if (!CKUtility::GetInstance()->IsDir(steps))
        m_messages.Of(m_job.BelowJob(steps)).Say(file_message::kMissing, 0, "The folder is not there.");
    const bool isThere = file.WasRead() && CKUtility::GetInstance()->IsDir(steps);
    if (isThere)
        ReadCompletely(m_context, file, *m_target.m_pMatrix);
    m_messages.Deliver();
    return isThere;
}

void CJobReading::ReadInfoAndSymbols()
{
    const CJOBXmatrixLayerArray& layers = m_target.m_pMatrix->m_arrLayers;
    for (__int64 i = 0; i < layers.GetSize(); ++i)
        if (const CJOBXmatrixLayer* const layer = layers.GetAt(i); layer != nullptr && !layer->m_sName.IsEmpty())
            m_job.rows.push_back({layer->m_sName, AsciiEqualNoCase(layer->m_sType.View(), kOfComponents)});
    for (const CJOBXmatrixStep& step : m_target.m_pMatrix->m_arrSteps.Records())
        m_job.steps.push_back(step.m_sName);
    const CSourceFolder misc(FindEntry(m_job.directory, "misc"));
    CSourceFile info(m_context, misc, info_format::kInfo, Presence::Optional);
    ReadCompletely(m_context, info, *m_target.m_pMisc);
    m_job.unit = m_target.m_pMisc->GetUnit();
    ReadAttributeTypes(m_context, misc, m_job.types);
    KeepAttributeUnits();
    AddSystemAttributes(m_job.types);
    ReadAttributeList(m_context, misc, *m_target.m_pMisc);
    ReadSymbols();
    m_messages.Deliver();
}

void CJobReading::KeepAttributeUnits()
{
    m_job.types.ForEach(
        [&](const std::string& name, const CAttributeTypes::Type& type)
        {
            if (type.units.empty())
                return;
            auto unit = std::make_unique<CJOBXProperty>();
            unit->m_sName = std::string_view(name);
            unit->m_sValue = std::string_view(type.units);
            m_target.m_pMisc->GetAttributeUnits()->Own(std::move(unit));
        });
}

void CJobReading::SaySameNames(const CString& place, const CStringArray& directories)
{
    CFirstNames names;
    for (INT_PTR i = 0; i < directories.GetSize(); ++i)
        if (const CString name = NameOf(directories[i]); names.LineBefore(name.View(), 1) != 0)
            m_messages.Of(m_job.BelowJob(place))
                .Say(file_message::kSameName, 0, "Another folder is also called ", Quoted{name.View()}, ".");
}

void CJobReading::ReadSymbols()
{
    const CString symbols = FindEntry(m_job.directory, "symbols");
    const CStringArray directories = DirectoriesIn(symbols);
    SaySameNames(symbols, directories);
    CParallelAppend<CJOBXSpecialSymbol> finished(*m_target.m_pSpecialSymbols);
    CParallelContexts contexts(m_context, static_cast<std::size_t>(directories.GetSize()));
    ParallelLoop(static_cast<int>(directories.GetSize()),
                 [&](int i)
                 {
                     const CReadingContext context = contexts.Of(static_cast<std::size_t>(i));
                     const CSourceFolder folder(directories[i]);
                     CSourceFile file(context, folder, "features", Presence::Needed);
                     auto symbol = std::make_unique<CJOBXSpecialSymbol>();
                     symbol->m_sPath = directories[i];
                     symbol->m_sName = NameOf(directories[i]);
                     symbol->GetLayer()->SetSourceFolder(CString(std::string_view(m_job.BelowJob(directories[i]))));
                     ReadCompletely(context, file, *symbol->GetLayer());
                     ReadAttributeList(context, folder, *symbol->GetLayer());
                     finished.Append(i, std::move(symbol));
                 });
    contexts.Join();
    finished.PutInOrder();
}

void CJobReading::ReadStepsAndFont(const CStringArray& stepNames)
{
    const CString steps = FindEntry(m_job.directory, "steps");
    CompareSteps(steps, stepNames);
    ReadCompletely(m_context, steps, stepNames, *m_target.m_pSteps);
    CSourceFile font(m_context, FindEntry(m_job.directory, "fonts"), font_format::kFile, Presence::Optional);
    ReadCompletely(m_context, font, *m_target.m_pFonts);
    ListCarriedFiles();
    if (m_job.reading.bKeepText)
        KeepTexts();
    m_messages.Deliver();
}

// A file that would have been read but for one of the same name.
void CJobReading::SayOtherSpelling(const std::string& file)
{
    if (const std::string taken = m_source.taken.FindInAnyCase(file); !taken.empty() && taken != file)
        m_messages.Of(file).Say(file_message::kSameName, 0, "The file ", Quoted{taken}, " is read instead.");
}

// Directories behind links are not searched: they may lead in circles.
void CJobReading::ListCarriedFiles()
{
    // The matrix counts as read even if this reading has gone without it.
    m_source.taken.Add(m_job.BelowJob(CSourceFile::Find(FindEntry(m_job.directory, "matrix"), matrix_format::kMatrix)));
    std::vector<CKDiagnostic> said; // what cannot be listed was reported where it was needed
    const CDiagnosticCapture capture(said);
    CStringArray files;
    CKUtility::GetInstance()->GetAllFileListIn(m_job.directory, files, "*.*", 1);
    for (INT_PTR i = 0; i < files.GetSize(); ++i)
    {
        const std::string below = m_job.BelowJob(files[i]);
        ULONGLONG size = 0;
        if (m_source.taken.Has(below) || SizeOfFile(files[i], size) != 0)
            continue;
        SayOtherSpelling(below);
        auto carried = std::make_unique<CJOBXcarriedFile>();
        carried->SetPath(CString(std::string_view(below)));
        carried->SetSize(size);
        m_source.carried[below] = size;
        m_target.m_pMisc->GetCarriedFiles()->Own(std::move(carried));
    }
}

// A file that cannot be read was reported, and is missing when the job is saved.
void CJobReading::KeepTexts()
{
    std::vector<CKDiagnostic> said;
    const CDiagnosticCapture capture(said);
    CSourceTree tree;
    std::string failed;
    tree.List(m_job.directory, failed);
    m_source.folders = std::move(tree.folders);
    for (const std::string& file : tree.files)
        if (CFileBytes bytes;
            bytes.Load(CKUtility::GetInstance()->CKPathCombine(m_job.directory, CString(std::string_view(file))),
                       __FILE__, __LINE__))
            m_source.texts[file] = bytes.View();
}

void CJobReading::CompareSteps(const CString& stepsDirectory, const CStringArray& stepNames)
{
    std::map<CString, CString> folders; // by name in lower case
    const CStringArray directories = DirectoriesIn(stepsDirectory);
    for (INT_PTR i = 0; i < directories.GetSize(); ++i)
        folders.try_emplace(Lower(NameOf(directories[i])), NameOf(directories[i]));
    SaySameNames(stepsDirectory, directories);
    CFileMessages& messages = m_messages.Of(m_job.BelowJob(stepsDirectory));
    for (INT_PTR i = 0; i < stepNames.GetSize(); ++i)
        if (!stepNames[i].IsEmpty() && !folders.contains(Lower(stepNames[i])))
            messages.Say(matrix_message::kNoStepFolder, 0, "The step ", Quoted{stepNames[i].View()}, " has no folder.");
    const CJOBXmatrixStepArray& rows = m_target.m_pMatrix->m_arrSteps;
    for (__int64 i = 0; i < rows.GetSize(); ++i)
        if (const CJOBXmatrixStep* const row = rows.GetAt(i))
            folders.erase(Lower(row->m_sName));
    for (const auto& [lower, folder] : folders)
        if (rows.GetSize() > 0)
            messages.Say(matrix_message::kNoStepRow, 0, "The matrix names no step ", Quoted{folder.View()}, ".");
    m_messages.Deliver();
}
