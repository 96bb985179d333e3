// Operations on a whole job.
#include "JOBXCLSDLL.h"
#include "robustness/MemoryOperations.h"

namespace
{
void ReadCompletely(CJOBX& job)
{
    CJOBXreading reading;
    reading.way = JOBXway::Complete;
    job.SetReading(reading);
    job.ParseODBOfMFC(SmallJob());
}

CJOBXstepObj& FirstStep(const CJOBX& job)
{
    return *job.m_pSteps->m_arrSteps.GetAt(0);
}

template <class Use>
void AddChange(MemoryOperations& all, const char* file, const char* name, Use use, Memory memory = Memory::Needed)
{
    AddUse<CJOBX>(all, file, name, ReadCompletely, use, memory);
}

CStringArray One(const char* name)
{
    CStringArray names;
    names.Add(name);
    return names;
}

const char* const kLayer = "a_layer_with_a_rather_long_name";

void AddSelection(MemoryOperations& all)
{
    AddChange(all, "JobSelection", "KeepSteps", [](CJOBX& job) { KeepSteps(job, One("PCB")); });
    AddChange(all, "JobSelection", "KeepSteps, refused", [](CJOBX& job) { KeepSteps(job, One(kLong)); });
    AddChange(all, "JobSelection", "KeepLayers", [](CJOBX& job) { KeepLayers(job, One(kLayer)); });
    AddChange(all, "JobSelection", "DropLayers", [](CJOBX& job) { DropLayers(job, One("comp_+_top")); });
    for (const JOBXjobPart part : {JOBXjobPart::Attributes, JOBXjobPart::Components, JOBXjobPart::Eda,
                                   JOBXjobPart::Nets, JOBXjobPart::Netlists, JOBXjobPart::Properties})
        AddChange(
            all, "JobSelection", "DropPart", [part](CJOBX& job) { DropPart(job, part); }, Memory::Sometimes);
}

void AddNames(MemoryOperations& all)
{
    AddChange(all, "JobNames", "RenameJob", [](CJOBX& job) { RenameJob(job, "a_name_that_is_long_enough"); });
    AddChange(all, "JobNames", "RenameJob, refused", [](CJOBX& job) { RenameJob(job, kLong); });
    AddChange(all, "JobNames", "RenameStep", [](CJOBX& job) { RenameStep(job, "PCB", "a_name_that_is_long_enough"); });
    AddChange(all, "JobNames", "RenameLayer",
              [](CJOBX& job) { RenameLayer(job, kLayer, "another_name_of_that_kind"); });
    AddChange(all, "JobNames", "OrderSteps", [](CJOBX& job) { OrderSteps(job, One("PCB")); });
    AddChange(all, "JobNames", "RenameNet",
              [](CJOBX& job)
              {
                  CJOBXstepObj& step = FirstStep(job);
                  RenameNet(step, step.GetEda()->m_pData->m_arrNets.GetAt(0)->m_sName, "a_name_that_is_long_enough");
              });
    AddChange(all, "JobAnonymity", "AnonymiseJob", [](CJOBX& job) { AnonymiseJob(job); });
}

void AddDeletion(MemoryOperations& all)
{
    const auto first = []
    {
        CArrayN places;
        places.Add(0);
        return places;
    };
    AddChange(all, "RecordDeletion", "DeleteFeatures",
              [first](CJOBX& job) { DeleteFeatures(FirstStep(job), *FirstStep(job).m_arrLayers.GetAt(0), first()); });
    AddChange(all, "RecordDeletion", "DeleteComponents",
              [first](CJOBX& job)
              { DeleteComponents(FirstStep(job), *FirstStep(job).m_arrComponents.GetAt(0), first()); });
    AddChange(all, "RecordDeletion", "DeleteNets", [first](CJOBX& job) { DeleteNets(FirstStep(job), first()); });
}

void ReadWithPanel(CJOBX& job)
{
    ReadCompletely(job);
    auto panel = std::make_unique<CJOBXstepObj>();
    panel->m_sName = "PANEL";
    auto boards = std::make_unique<CJOBXstepRepeat>();
    boards->m_sName = "PCB";
    boards->m_ptCount.SetData(2, 1);
    boards->m_dAngle = 30.0;
    panel->GetHeader()->m_arrStepRepeats.Own(std::move(boards));
    job.m_pSteps->m_arrSteps.Own(std::move(panel));
}

void AddGeometry(MemoryOperations& all)
{
    AddChange(all, "JobUnits", "ConvertJobUnits", [](CJOBX& job) { ConvertJobUnits(job, JOBXunit::Millimetre); });
    AddUse<CJOBX>(all, "StepFlattening", "FlattenStep", ReadWithPanel,
                  [](CJOBX& job) { FlattenStep(job, CString("PANEL")); });
    AddChange(all, "StepFlattening", "FlattenStep, refused", [](CJOBX& job) { FlattenStep(job, kLong); });
}
} // namespace

MemoryOperations ChangeOperations()
{
    MemoryOperations all;
    AddUse<CJOBXresult>(
        all, "CJOBXresult", "constructor", [](auto&) {}, [](auto& result) { result = CJOBXresult(CString(kLong)); });
    AddSelection(all);
    AddNames(all);
    AddDeletion(all);
    AddGeometry(all);
    return all;
}
