#include "job/SavedTree.h"

#include "components/CJOBXcomponentsFields.h"
#include "components/ComponentsLines.h"
#include "components/ComponentsReader.h"
#include "eda/CJOBXdataFields.h"
#include "eda/CJOBXeda.h"
#include "eda/EdaLines.h"
#include "eda/EdaReader.h"
#include "foundation/CommonFields.h"
#include "foundation/corekit/SystemEntries.h"
#include "foundation/framework/AsciiText.h"
#include "job/CJOBX.h"
#include "job/CJOBXmatrixFields.h"
#include "job/CJOBXmiscFields.h"
#include "job/CJOBXsteps.h"
#include "job/InfoFormat.h"
#include "job/InfoLines.h"
#include "job/InfoReader.h"
#include "job/MatrixFormat.h"
#include "job/MatrixLines.h"
#include "job/MatrixReader.h"
#include "layer/CJOBXSpecialSymbolFields.h"
#include "layer/CJOBXfontsFields.h"
#include "layer/CJOBXlayerFields.h"
#include "layer/CJOBXtoolFields.h"
#include "layer/FeaturesReader.h"
#include "layer/FontFormat.h"
#include "layer/FontLines.h"
#include "layer/FontReader.h"
#include "layer/LayerLines.h"
#include "layer/ToolsFormat.h"
#include "layer/ToolsLines.h"
#include "layer/ToolsReader.h"
#include "netlist/CJOBXnetlistFields.h"
#include "netlist/NetlistLines.h"
#include "netlist/NetlistReader.h"
#include "reading/AttributeListReader.h"
#include "reading/CSourceFile.h"
#include "reading/SavingMessageKinds.h"
#include "saving/AttributeListLines.h"
#include "saving/SameRecords.h"
#include "step/CJOBXstephdrFields.h"
#include "step/MendReferences.h"
#include "step/StephdrLines.h"
#include "step/StephdrReader.h"

#include <algorithm>
#include <utility>

using namespace saving_message;

namespace
{
constexpr char kAttributeList[] = "attrlist";
constexpr char kFeatures[] = "features";
constexpr char kComponents[] = "components";
constexpr char kProfile[] = "profile";
constexpr char kHeader[] = "stephdr";
constexpr char kData[] = "data";
constexpr char kShorts[] = "shortf";
constexpr char kNetlist[] = "netlist";
constexpr char kMainNetlist[] = "cadnet";

// How a part is compared, listed and read back.
template <class Part>
bool IsSamePart(const Part& before, const Part& now)
{
    return AreSame(before, now);
}
bool IsSamePart(const CJOBXeda& before, const CJOBXeda& now)
{
    return same_records::AreSameItems(before.GetShorts(), now.GetShorts());
}

template <class Part>
void ListPart(const Part& part, const CAttributeTypes& types, const CMendedReferences& references, CRecordLines& lines)
{
    if constexpr (requires { ListLines(part, types, references, lines); })
        ListLines(part, types, references, lines);
    else if constexpr (requires { ListLines(part, references, lines); })
        ListLines(part, references, lines);
    else if constexpr (requires { ListLines(part, types, lines); })
        ListLines(part, types, lines);
    else
        ListLines(part, lines);
}

template <class Part>
void ReadPart(const CReadingContext& context, const char* name, CRecordLines& lines)
{
    Part part;
    CSourceFile file(context, context.job.directory, name, Presence::Needed);
    if (file.WasRead())
        ReadCompletely(context, file, part);
    ListPart(part, context.job.types, CMendedReferences(), lines);
}
template <>
void ReadPart<CJOBXattributeList>(const CReadingContext& context, const char* /*name*/, CRecordLines& lines)
{
    CJOBXcomponents owner;
    ReadAttributeList(context, context.job.directory, owner);
    if (const CJOBXattributeList* const list = owner.pGetAttributeList())
        ListLines(*list, lines);
}

constexpr std::string_view kEndOfSum = ".sum";
bool IsSum(const std::string& file)
{
    return file.size() > kEndOfSum.size() &&
           AsciiEqualNoCase(std::string_view(file).substr(file.size() - kEndOfSum.size()), kEndOfSum);
}
// The file that a check sum file is about: "features" for "features.sum" and ".features.sum".
std::string SummedFile(const std::string& sum)
{
    const std::string name = LastPartOf(sum);
    const std::size_t begin = name.starts_with('.') ? 1 : 0;
    return Joined(FolderOf(sum), name.substr(begin, name.size() - kEndOfSum.size() - begin));
}
} // namespace

CSavedTree::CSavedTree(const CJOBX& before, const CJOBX& now, const CJobSource* source,
                       const CFileSaving::Places& places, const CJOBXreading& reading, CMessageList& messages)
    : m_before(before),
      m_now(now),
      m_messages(messages),
      m_files(places, source, reading, now.m_pMisc->GetUnit()),
      m_isListed(places.source.IsEmpty() || ListSource(places.source)),
      m_folders(m_tree, before, now,
                [this](const std::string& folder)
                { m_files.Fail(folder, kBadName, "The folder cannot have this name, or another one has it."); })
{
    for (const std::string& file : m_tree.files)
        m_names[FolderOf(file)].push_back(LastPartOf(file));
}

bool CSavedTree::ListSource(const CString& source)
{
    std::string failed;
    const int error = m_tree.List(source, failed);
    if (error != 0)
        m_files.Fail(failed, kChanged, "The folder cannot be read again: ", SystemReason(error), ".");
    return error == 0;
}

bool CSavedTree::Write()
{
    AddParts();
    AddCopies();
    if (m_files.Failures().empty())
        MakeFolders();
    if (m_files.Failures().empty())
        m_tasks.Run();
    if (m_files.Failures().empty())
        CopySums();
    for (const CFileSaving::Failure& failure : m_files.Failures())
        m_messages.Of(failure.file).Say(*failure.kind, 0, failure.text);
    return m_files.Failures().empty();
}

void CSavedTree::MakeFolders()
{
    for (const std::string& folder : m_folders.All())
        if (const int error = MakeNewDirectory(m_files.OutputPath(folder)); error != 0)
            m_files.Fail(folder, kNotWritten, "The folder cannot be made: ", SystemReason(error), ".");
}

// The file of a part in the source, in the form that is read; "" if there is none.
std::string CSavedTree::FindSource(const FilePlace& place) const
{
    const auto names = m_names.find(place.from);
    if (names == m_names.end() || place.isNew)
        return {};
    const std::string name = CSourceFile::FindName(names->second, place.name);
    return name.empty() ? name : Joined(place.from, name);
}

// `now` is null for a part that is gone.
template <class Part>
void CSavedTree::Add(const FilePlace& place, const Part& before, const Part* now)
{
    const std::string source = FindSource(place);
    if (!source.empty() && !m_done.insert(source).second)
        return; // of another part that came from the same folder
    static const Part nothing;
    if (now == nullptr || (source.empty() && !place.isNeeded && IsSamePart(before, *now)))
        return;
    if (!place.isNeeded && IsSamePart(nothing, *now) && !IsSamePart(nothing, before))
        return; // all of it was taken away
    m_folders.Add(place.to);
    ULONGLONG size = 0;
    if (!source.empty())
        SizeOfFile(m_files.SourcePath(source), size);
    m_tasks.Add(static_cast<__int64>(size), [this, source, place, &before, now] { Save(source, place, before, *now); });
}

template <class Part>
void CSavedTree::Save(const std::string& source, const FilePlace& place, const Part& before, const Part& now)
{
    if (!source.empty() && !m_references.IsAbout(&now) && IsSamePart(before, now))
        return m_files.Copy(source, Joined(place.to, LastPartOf(source)));
    CRecordLines linesBefore;
    CRecordLines linesNow;
    if (!source.empty())
        ListPart(before, m_files.Types(), CMendedReferences(), linesBefore);
    ListPart(now, m_files.Types(), m_references, linesNow);
    const std::size_t length = std::string_view(place.name).size();
    const std::string name = source.empty() ? place.name : LastPartOf(source).substr(0, length); // without ".Z"
    m_files.Weave(source, Joined(place.to, name), linesBefore, linesNow,
                  [&place](const CReadingContext& context, CRecordLines& lines)
                  { ReadPart<Part>(context, place.name, lines); });
}

void CSavedTree::AddAttributes(const CJOBXattributed& before, const CJOBXattributed* now, FilePlace place)
{
    static const CJOBXattributeList nothing;
    const CJOBXattributeList* const was = before.pGetAttributeList();
    place.name = kAttributeList;
    place.isNeeded = false;
    Add(place, was != nullptr ? *was : nothing, now != nullptr ? now->pGetAttributeList() : nullptr);
}

// A file in a folder of the job.
CSavedTree::FilePlace CSavedTree::InJob(const char* folder, const char* name) const
{
    const std::string spelling = m_folders.NameIn("", folder);
    return {spelling, spelling, name, false, false};
}

void CSavedTree::AddParts()
{
    FilePlace matrix = InJob("matrix", matrix_format::kMatrix);
    matrix.isNeeded = true;
    Add(matrix, *m_before.m_pMatrix, m_now.m_pMatrix);
    Add(InJob("misc", info_format::kInfo), *m_before.m_pMisc, m_now.m_pMisc);
    AddAttributes(*m_before.m_pMisc, m_now.m_pMisc, InJob("misc", kAttributeList));
    Add(InJob("fonts", font_format::kFile), *m_before.m_pFonts, m_now.m_pFonts);
    AddSymbols();
    AddSteps();
}

void CSavedTree::AddSymbols()
{
    static const CJOBXlayer nothing;
    const CPartsByFolder<CJOBXlayer> before(CSymbolLayers{m_before});
    for (const CJOBXSpecialSymbol& symbol : m_now.m_pSpecialSymbols->Records())
    {
        const CJOBXlayer& now = *symbol.GetLayer();
        const CJOBXlayer* const was = before.Find(&now);
        FilePlace place = PlaceOf(now.GetSourceFolder(), symbol.m_sName, m_folders.NameIn("", "symbols"));
        place.name = kFeatures;
        place.isNeeded = place.isNew;
        Add(place, was != nullptr ? *was : nothing, &now);
        AddAttributes(was != nullptr ? *was : nothing, &now, place);
    }
}

void CSavedTree::AddSteps()
{
    static const CJOBXstepObj nothing;
    const CPartsByFolder<CJOBXstepObj> before(m_before.m_pSteps->m_arrSteps);
    for (const CJOBXstepObj& step : m_now.m_pSteps->m_arrSteps.Records())
    {
        const CJOBXstepObj* const was = before.Find(&step);
        if (was != nullptr)
            MendReferences(*was, step, m_messages, m_references);
        AddStep(was != nullptr ? *was : nothing, step);
    }
}

void CSavedTree::AddStep(const CJOBXstepObj& before, const CJOBXstepObj& now)
{
    const FilePlace step = PlaceOf(now.GetSourceFolder(), now.m_sName, m_folders.NameIn("", "steps"));
    FilePlace place = step;
    place.name = kProfile;
    place.isNeeded = step.isNew;
    Add(place, *before.m_pProfile, now.m_pProfile);
    place.name = kHeader;
    Add(place, *before.m_pHeader, now.m_pHeader);
    AddAttributes(before, &now, step);
    AddLayers(before, now, step);
    place = In(step, "eda");
    place.name = kData;
    Add(place, *before.m_pEda->m_pData, now.m_pEda->m_pData);
    place.name = kShorts;
    Add(place, *before.m_pEda, now.m_pEda);
    AddNetlists(before, now, step);
}

void CSavedTree::AddLayers(const CJOBXstepObj& before, const CJOBXstepObj& now, const FilePlace& step)
{
    static const CJOBXlayer noLayer;
    static const CJOBXcomponents noComponents;
    const std::string parent = In(step, "layers").to;
    const CPartsByFolder<CJOBXlayer> layers(before.m_arrLayers);
    const CPartsByFolder<CJOBXcomponents> components(before.m_arrComponents);
    for (const CJOBXlayer& layer : now.m_arrLayers.Records())
    {
        const CJOBXlayer* const found = layers.Find(&layer);
        const CJOBXlayer& was = found != nullptr ? *found : noLayer;
        FilePlace place = PlaceOf(layer.GetSourceFolder(), layer.m_sName, parent);
        place.name = kFeatures;
        place.isNeeded = place.isNew;
        Add(place, was, &layer);
        place.name = tools_format::kTools;
        place.isNeeded = false;
        Add(place, *was.GetTool(), layer.GetTool());
        AddAttributes(was, &layer, place);
    }
    for (const CJOBXcomponents& file : now.m_arrComponents.Records())
    {
        const CJOBXcomponents* const found = components.Find(&file);
        const CJOBXcomponents& was = found != nullptr ? *found : noComponents;
        FilePlace place = PlaceOf(file.GetSourceFolder(), file.m_sLayerName, parent);
        place.name = kComponents;
        place.isNeeded = place.isNew;
        Add(place, was, &file);
        if (was.pGetAttributeList() != nullptr || file.pGetAttributeList() != nullptr)
            AddAttributes(was, &file, place);
    }
    LeaveOutGone<CJOBXlayer>(before.m_arrLayers, now.m_arrLayers, kFeatures);
    LeaveOutGone<CJOBXcomponents>(before.m_arrComponents, now.m_arrComponents, kComponents);
}

// The files of layers that are gone from a folder that stays.
template <class Part, class List>
void CSavedTree::LeaveOutGone(const List& before, const List& now, const char* name)
{
    const CPartsByFolder<Part> left(now);
    for (const Part& part : before.Records())
        if (left.Find(&part) == nullptr)
            if (const std::string source = FindSource({ToText(part.GetSourceFolder()), "", name, false, false});
                !source.empty())
                m_done.insert(source);
}

void CSavedTree::AddNetlists(const CJOBXstepObj& before, const CJOBXstepObj& now, const FilePlace& step)
{
    static const CJOBXnetlist nothing;
    const FilePlace netlists = In(step, "netlists");
    FilePlace place = In(netlists, kMainNetlist);
    place.name = kNetlist;
    Add(place, *before.m_pNetlist, now.m_pNetlist);
    if (now.pGetFurtherNetlists() == nullptr)
        return;
    const CJOBXnetlistArray none;
    const CPartsByFolder<CJOBXnetlist> was(before.pGetFurtherNetlists() != nullptr ? *before.pGetFurtherNetlists()
                                                                                   : none);
    for (const CJOBXnetlist& netlist : now.pGetFurtherNetlists()->Records())
    {
        const CJOBXnetlist* const found = was.Find(&netlist);
        place = PlaceOf(netlist.GetSourceFolder(), netlist.GetName(), netlists.to);
        place.name = kNetlist;
        place.isNeeded = place.isNew;
        Add(place, found != nullptr ? *found : nothing, &netlist);
    }
}

CSavedTree::FilePlace CSavedTree::PlaceOf(const CString& sourceFolder, const CString& name, const std::string& parent)
{
    return {ToText(sourceFolder), m_folders.PlaceOfPart(sourceFolder, name, parent), "", false, sourceFolder.IsEmpty()};
}

// A folder in another one.
CSavedTree::FilePlace CSavedTree::In(const FilePlace& folder, const char* name) const
{
    const std::string spelling = m_folders.NameIn(folder.from, name);
    return {Joined(folder.from, spelling), Joined(folder.to, spelling), "", false, folder.isNew};
}

// The files that no part has: those that the job still lists, and those that hold definitions.
void CSavedTree::AddCopies()
{
    const auto pathsOf = [](const CJOBX& job)
    {
        std::set<std::string> paths;
        for (const CJOBXcarriedFile& file : job.m_pMisc->GetCarriedFiles()->Records())
            paths.insert(ToText(file.GetPath()));
        return paths;
    };
    const std::set<std::string> carriedBefore = pathsOf(m_before);
    const std::set<std::string> carried = pathsOf(m_now);
    for (const std::string& file : m_tree.files)
    {
        const std::string folder = FolderOf(file);
        const bool isGone = carriedBefore.contains(file) && !carried.contains(file);
        if (isGone || IsSum(file) || m_folders.IsLeftOut(folder) || !m_done.insert(file).second)
            continue;
        const std::string to = Joined(m_folders.PlaceOf(folder), LastPartOf(file));
        m_tasks.Add(0, [this, file, to] { m_files.Copy(file, to); });
    }
    for (const std::string& other : m_tree.others)
        m_messages.Of(other).Say(kNoFile, 0, "This is no file and no folder; it is left out.");
}

// A check sum is only right as long as its file is.
void CSavedTree::CopySums()
{
    for (const std::string& file : m_tree.files)
    {
        const std::string folder = FolderOf(file);
        if (!IsSum(file) || m_folders.IsLeftOut(folder) || m_done.contains(file))
            continue;
        const std::string summed = SummedFile(file);
        const auto isOf = [&](const std::string& changed)
        { return changed == summed || changed.starts_with(summed + '.'); };
        if (std::any_of(m_files.Changed().begin(), m_files.Changed().end(), isOf))
            m_messages.Of(file).Say(kSum, 0, "The check sum is left out, because its file has changed.");
        else
            m_files.Copy(file, Joined(m_folders.PlaceOf(folder), LastPartOf(file)));
    }
}
