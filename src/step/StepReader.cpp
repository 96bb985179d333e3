#include "step/StepReader.h"

#include "components/ComponentsReader.h"
#include "eda/CJOBXdata.h"
#include "eda/CJOBXeda.h"
#include "eda/EdaReader.h"
#include "foundation/ParallelLoop.h"
#include "foundation/ProgressReport.h"
#include "foundation/corekit/CKUtility.h"
#include "foundation/corekit/EntryLookup.h"
#include "foundation/corekit/TextTools.h"
#include "layer/CJOBXtool.h"
#include "layer/FeaturesReader.h"
#include "layer/ToolsFormat.h"
#include "layer/ToolsReader.h"
#include "netlist/CJOBXnetlist.h"
#include "netlist/NetlistReader.h"
#include "reading/AttributeListReader.h"
#include "reading/CFirstNames.h"
#include "reading/FileMessageKinds.h"
#include "reading/MatrixMessageKinds.h"
#include "step/CJOBXstepObj.h"
#include "step/CJOBXstephdr.h"
#include "step/StepReferences.h"
#include "step/StephdrReader.h"

#include <map>
#include <memory>

namespace
{
CString LastPartOf(const CString& path)
{
    return CKUtility::GetInstance()->GetSegmntFromFilePath(path, 2);
}

class CStepReading
{
public:
    CStepReading(const CReadingContext& context, const CString& directory, CJOBXstepObj& step)
        : m_context(context), m_directory(directory), m_step(step)
    {
        for (const CReadingJob::Row& row : context.job.rows)
            m_rows.try_emplace(MakeLower(row.layer), &row);
    }

    void Read()
    {
        m_step.m_pProfile->m_sName = "profile";
        const CString below(std::string_view(m_context.job.BelowJob(m_directory)));
        m_step.SetSourceFolder(below);
        m_step.m_pProfile->SetSourceFolder(below);
        const CSourceFolder folder(m_directory);
        ReadFile(m_context, folder, "profile", Presence::Needed, *m_step.m_pProfile);
        ReadFile(m_context, folder, "stephdr", Presence::Optional, *m_step.m_pHeader);
        ReadAttributeList(m_context, folder, m_step);
        ShowStatus(m_step.m_pStatus, "Complete profile file reading");
        ReadLayers(FindEntry(m_directory, "layers"));
        ShowStatus(m_step.m_pStatus, "Complete layers file reading");
        const CSourceFolder eda(FindEntry(m_directory, "eda"));
        ReadFile(m_context, eda, "data", Presence::Optional, *m_step.m_pEda->m_pData);
        ShowStatus(m_step.m_pStatus, "Complete eda file reading");
        ReadFile(m_context, eda, "shortf", Presence::Optional, *m_step.m_pEda);
        ReadNetlists(FindEntry(m_directory, "netlists"));
        CheckReferences(m_context, m_directory, m_step);
        ShowStatus(m_step.m_pStatus, "Complete netlists file reading");
    }

private:
    // Whether the file is there.
    template <class T>
    static bool ReadFile(const CReadingContext& context, const CSourceFolder& folder, const char* name,
                         Presence presence, T& into)
    {
        CSourceFile file(context, folder, name, presence);
        if (file.IsThere())
            ReadCompletely(context, file, into);
        return file.IsThere();
    }

    void ReadLayers(const CString& layersDirectory)
    {
        CStringArray directories;
        if (CKUtility::GetInstance()->IsDir(layersDirectory))
            CKUtility::GetInstance()->GetAllSubDirListIn(layersDirectory, directories, 0);
        CompareWithMatrix(layersDirectory, directories);
        CParallelAppend<CJOBXlayer> layers(m_step.m_arrLayers);
        CParallelAppend<CJOBXcomponents> components(m_step.m_arrComponents);
        CParallelContexts contexts(m_context, static_cast<std::size_t>(directories.GetSize()));
        ParallelLoop(static_cast<int>(directories.GetSize()),
                     [&](int i)
                     {
                         const CReadingContext context = contexts.Of(static_cast<std::size_t>(i));
                         auto layer = std::make_unique<CJOBXlayer>();
                         auto file = std::make_unique<CJOBXcomponents>();
                         const FilesOfLayer found = ReadLayer(context, directories[i], *layer, *file);
                         if (found.hasFeatures)
                             layers.Append(i, std::move(layer));
                         if (found.hasComponents)
                             components.Append(i, std::move(file));
                     });
        contexts.Join();
        layers.PutInOrder();
        components.PutInOrder();
    }

    struct FilesOfLayer
    {
        bool hasFeatures;
        bool hasComponents;
    };
    FilesOfLayer ReadLayer(const CReadingContext& context, const CString& directory, CJOBXlayer& layer,
                           CJOBXcomponents& components) const
    {
        layer.m_sName = LastPartOf(directory);
        layer.SetSourceFolder(CString(std::string_view(context.job.BelowJob(directory))));
        components.SetSourceFolder(layer.GetSourceFolder());
        components.m_sLayerName = layer.m_sName;
        components.m_sRelativePath = CKUtility::GetInstance()->CKPathCombine(layer.m_sName, "components");
        const CSourceFolder folder(directory);
        const bool hasFeatures = ReadFile(context, folder, "features", PresenceOf(layer.m_sName, false), layer);
        const bool hasComponents = ReadFile(context, folder, "components", PresenceOf(layer.m_sName, true), components);
        if (hasFeatures)
            ReadFile(context, folder, tools_format::kTools, Presence::Optional, *layer.GetTool());
        if (hasFeatures || hasComponents)
            ReadAttributeList(context, folder, hasFeatures ? static_cast<CJOBXattributed&>(layer) : components);
        return {hasFeatures, hasComponents};
    }

    void ReadNetlists(const CString& netlistsDirectory)
    {
        CStringArray directories;
        if (CKUtility::GetInstance()->IsDir(netlistsDirectory))
            CKUtility::GetInstance()->GetAllSubDirListIn(netlistsDirectory, directories, 0);
        const CString main = FindEntry(netlistsDirectory, "cadnet");
        for (INT_PTR i = 0; i < directories.GetSize(); ++i)
        {
            auto further = std::make_unique<CJOBXnetlist>();
            const bool isMain = directories[i] == main;
            CJOBXnetlist& netlist = isMain ? *m_step.m_pNetlist : *further;
            if (!ReadFile(m_context, directories[i], "netlist", Presence::Optional, netlist))
                continue;
            netlist.SetName(LastPartOf(directories[i]));
            netlist.SetSourceFolder(CString(std::string_view(m_context.job.BelowJob(directories[i]))));
            if (!isMain)
                m_step.pMakeFurtherNetlists()->Own(std::move(further));
        }
    }

    // A component layer needs its components, any other layer its features. For a layer without a row, nothing is
    // known.
    Presence PresenceOf(const CString& layer, bool ofComponents) const
    {
        const auto row = m_rows.find(MakeLower(layer));
        return row != m_rows.end() && row->second->isOfComponents == ofComponents ? Presence::Needed
                                                                                  : Presence::Optional;
    }

    // A step that repeats others may lack the layers that they have.
    void CompareWithMatrix(const CString& layersDirectory, const CStringArray& directories)
    {
        if (m_rows.empty())
            return;
        CFileMessages& messages = m_context.messages.Of(m_context.job.BelowJob(layersDirectory));
        std::map<CString, const CReadingJob::Row*> missing = m_rows;
        CFirstNames names;
        for (INT_PTR i = 0; i < directories.GetSize(); ++i)
        {
            const CString name = LastPartOf(directories[i]);
            if (names.LineBefore(name.View(), 1) != 0)
                messages.Say(file_message::kSameName, 0, "Another folder is also called ", Quoted{name.View()}, ".");
            if (!m_rows.contains(MakeLower(name)))
                messages.Say(matrix_message::kNoLayerRow, 0, "No row of the matrix names the folder ",
                             Quoted{name.View()}, ".");
            missing.erase(MakeLower(name));
        }
        if (m_step.m_pHeader->m_arrStepRepeats.GetSize() > 0)
            return;
        for (const CReadingJob::Row& row : m_context.job.rows)
            if (missing.erase(MakeLower(row.layer)) > 0)
                messages.Say(matrix_message::kNoLayerFolder, 0, "The layer ", Quoted{row.layer.View()},
                             " has no folder.");
    }

    const CReadingContext& m_context;
    const CString& m_directory;
    CJOBXstepObj& m_step;
    std::map<CString, const CReadingJob::Row*> m_rows; // by layer, in lower case
};
} // namespace

void ReadCompletely(const CReadingContext& context, const CString& stepDirectory, CJOBXstepObj& step)
{
    CStepReading(context, stepDirectory, step).Read();
}
