#include "tables/ComponentsCommand.h"

#include "model/PackageIndex.h"

namespace
{
void AddStep(Table& table, const CJOBXstepObj& step)
{
    const PackageIndex packages(step.GetEda()->m_pData->m_arrPkgs);
    for (__int64 f = 0; f < step.m_arrComponents.GetSize(); ++f)
    {
        const CJOBXcomponents* const file = step.m_arrComponents.GetAt(f);
        for (__int64 i = 0; file != nullptr && i < file->m_arrCmps.GetSize(); ++i)
        {
            const CJOBXcmp* const component = file->m_arrCmps.GetAt(i);
            if (component == nullptr)
                continue;
            const CJOBXdataPkg* const package = packages.Find(component->m_nPkgRef);
            table.Add({CellOf(step.m_sName), CellOf(file->m_sLayerName), CellOf(component->m_nNumber),
                       CellOf(component->m_sName), CellOf(component->sGetPartName()),
                       package == nullptr ? Cell() : CellOf(package->m_sName), CellOf(component->m_ptLocation.x),
                       CellOf(component->m_ptLocation.y), CellOf(component->m_dRotation), CellOf(component->m_nMirror),
                       CellOf(static_cast<std::int64_t>(component->m_arrTops.GetSize())),
                       CellOf(static_cast<std::int64_t>(component->m_arrProperties.GetSize())),
                       CellOf(static_cast<std::int64_t>(component->m_arrAttributes.GetSize()))});
        }
    }
}
} // namespace

void RunComponents(const ReadOptions& options, TableForm form)
{
    const std::unique_ptr<CJOBX> job = ReadGoodJob(options);
    Table table({{"Step", "step"},
                 {"Layer", "layer"},
                 {"Number", "number", true},
                 {"Name", "name"},
                 {"Part", "part"},
                 {"Package", "package"},
                 {"X", "x", true},
                 {"Y", "y", true},
                 {"Rotation", "rotation", true},
                 {"Mirror", "mirror", true},
                 {"Toeprints", "toeprints", true},
                 {"Properties", "properties", true},
                 {"Attributes", "attributes", true}});
    const CJOBXstepObjArray& steps = job->m_pSteps->m_arrSteps;
    for (__int64 i = 0; i < steps.GetSize(); ++i)
        if (const CJOBXstepObj* const step = steps.GetAt(i))
            AddStep(table, *step);
    Output output;
    table.Print(output, form);
}
