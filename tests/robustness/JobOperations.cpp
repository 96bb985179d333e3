// A job, its matrix, steps and headers.
#include "JOBXCLSDLL.h"
#include "robustness/MemoryOperations.h"

namespace
{
CString Out(const char* name)
{
    return ScratchDir().MakeDir(name).c_str();
}

void AddMatrix(MemoryOperations& all)
{
    const auto read = [](CJOBXmatrix& matrix) { matrix.ParseODBOfMFC(SmallJob() + "/matrix"); };
    AddMaking<CJOBXmatrix>(all, "CJOBXmatrix");
    AddMaking<CJOBXmatrixLayer>(all, "CJOBXmatrixLayer");
    AddMaking<CJOBXmatrixLayerArray>(all, "CJOBXmatrixLayerArray");
    AddMaking<CJOBXmatrixStep>(all, "CJOBXmatrixStep");
    AddMaking<CJOBXmatrixStepArray>(all, "CJOBXmatrixStepArray");
    AddUse<CJOBXmatrix>(
        all, "CJOBXmatrix", "ParseODBOfMFC", [](auto&) {}, read);
    AddUse<CJOBXmatrix>(all, "CJOBXmatrix", "WriteODBData", read,
                        [out = Out("matrix")](auto& matrix) { matrix.WriteODBData(out); });
    AddUse<CJOBXmatrix>(all, "CJOBXmatrix", "lookups", read,
                        [](auto& matrix)
                        {
                            CString name(kLong);
                            matrix.GetTopLayerName();
                            matrix.GetBottomLayerName();
                            matrix.sGetMatrixLayerType(0);
                            matrix.pGetMatrixLayerFromName(name);
                            matrix.GetMatrixLayerFromName(name);
                        });
    AddUse<CJOBXmatrixLayerArray>(
        all, "CJOBXmatrixLayerArray", "changes",
        [](auto& layers) { layers.Own(std::make_unique<CJOBXmatrixLayer>())->m_sName = kLong; },
        [](auto& layers)
        {
            layers.SetODBmatrixLayerName(kOther);
            layers.SetODBmatrixLayerType(kOther);
            layers.IsDrillLayer(kOther);
            layers.GetMatrixLayer(kOther);
        });
}

void AddSystemAttributes(MemoryOperations& all)
{
    const CString file =
        ScratchDir()
            .Write("attributes", "OPTION {\n NAME=a name that is long\n OPTIONS=a_long_option;another_option\n}\n")
            .c_str();
    AddMaking<CJOBXsysAttrData>(all, "CJOBXsysAttrData");
    AddMaking<CJOBXsysAttrDataArray>(all, "CJOBXsysAttrDataArray");
    AddUse<CJOBXsysAttrDataArray>(
        all, "CJOBXsysAttrDataArray", "ParseODBOfMFC", [](auto&) {}, [file](auto& list) { list.ParseODBOfMFC(file); });
    AddMaking<CJOBXmisc>(all, "CJOBXmisc");
    AddMaking<CJOBXcarriedFile>(all, "CJOBXcarriedFile");
    AddMaking<CJOBXcarriedFileArray>(all, "CJOBXcarriedFileArray");
    AddUse<CJOBXcarriedFile>(
        all, "CJOBXcarriedFile", "SetPath", [](auto&) {}, [](auto& carried) { carried.SetPath(kLong); });
    AddUse<CJOBXmisc>(
        all, "CJOBXmisc", "ParseODBOfMFC", [](auto&) {}, [](auto& info) { info.ParseODBOfMFC(SmallJob() + "/misc"); });
}

void AddHeader(MemoryOperations& all)
{
    const auto read = [](CJOBXstephdr& header) { header.ParseODBOfMFC(SmallJob() + "/steps/pcb/stephdr"); };
    AddMaking<CJOBXstephdr>(all, "CJOBXstephdr");
    AddMaking<CJOBXstephdrArray>(all, "CJOBXstephdrArray");
    AddMaking<CJOBXstepRepeat>(all, "CJOBXstepRepeat");
    AddMaking<CJOBXstepRepeatArray>(all, "CJOBXstepRepeatArray");
    AddUse<CJOBXstephdr>(
        all, "CJOBXstephdr", "ParseODBOfMFC", [](auto&) {}, read);
    AddUse<CJOBXstephdr>(all, "CJOBXstephdr", "WriteODBData", read,
                         [out = Out("header")](auto& header) { header.WriteODBData(out); });
    AddUse<CJOBXstephdrArray>(
        all, "CJOBXstephdrArray", "WriteODBData",
        [read](auto& headers) { read(*headers.Own(std::make_unique<CJOBXstephdr>())); },
        [out = Out("headers")](auto& headers) { headers.WriteODBData(out); });
}

void AddStep(MemoryOperations& all)
{
    const auto read = [](CJOBXstepObj& step)
    {
        step.m_sName = "PCB"; // one without name is not written
        step.ParseODBOfMFC(SmallJob() + "/steps/pcb");
    };
    AddMaking<CJOBXstepObj>(all, "CJOBXstepObj");
    AddMaking<CJOBXstepObjArray>(all, "CJOBXstepObjArray");
    AddMaking<CJOBXsteps>(all, "CJOBXsteps");
    AddUse<CJOBXstepObj>(
        all, "CJOBXstepObj", "ParseODBOfMFC", [](auto&) {}, read);
    AddUse<CJOBXstepObj>(all, "CJOBXstepObj", "WriteODBData", read,
                         [out = Out("step")](auto& step) { step.WriteODBData(out, 1); });
    AddUse<CJOBXstepObj>(
        all, "CJOBXstepObj", "UnitConvert", read, [](auto& step) { step.UnitConvert(2.0); }, Memory::Sometimes);
    AddUse<CJOBXstepObj>(all, "CJOBXstepObj", "ScaneODBComponents", read,
                         [](auto& step)
                         { const std::unique_ptr<CJOBXcomponentsArray> scanned(step.ScaneODBComponents(0)); });
    AddUse<CJOBXstepObj>(
        all, "CJOBXstepObj", "ScanUsedODBcmpIDDataIndataNet", read,
        [](auto& step)
        { const std::unique_ptr<CJOBXdataNetArray> scanned(step.ScanUsedODBcmpIDDataIndataNet(0, "T")); });
    AddUse<CJOBXstepObj>(all, "CJOBXstepObj", "ScanLayerObjDataInLayer", read,
                         [](auto& step) { step.ScanLayerObjDataInLayer(kLong); });
    AddUse<CJOBXsteps>(
        all, "CJOBXsteps", "ParseODBOfMFC", [](auto&) {},
        [](auto& steps)
        {
            CStringArray names;
            names.Add("PCB");
            steps.ParseODBOfMFC(SmallJob() + "/steps", names);
        });
    AddMaking<CJOBXnetlistArray>(all, "CJOBXnetlistArray");
    AddUse<CJOBXstepObj>(
        all, "CJOBXstepObj", "pMakeFurtherNetlists", [](auto&) {},
        [](auto& step) { step.pMakeFurtherNetlists()->Own(std::make_unique<CJOBXnetlist>()); });
    AddUse<CJOBXstepObjArray>(
        all, "CJOBXstepObjArray", "WriteODBData",
        [read](auto& steps) { read(*steps.Own(std::make_unique<CJOBXstepObj>())); },
        [out = Out("steps")](auto& steps) { steps.WriteODBData(out, 1); });
}

void AddRoot(MemoryOperations& all)
{
    const auto read = [](CJOBX& job) { job.ParseODBOfMFC(SmallJob()); };
    AddMaking<CJOBX>(all, "CJOBX");
    AddUse<CJOBX>(
        all, "CJOBX", "ParseODBOfMFC", [](auto&) {}, read);
    AddUse<CJOBX>(
        all, "CJOBX", "ParseODBOfMFC, completely", [](auto&) {},
        [](auto& job)
        {
            class Sink : public CJOBXmessageSink
            {
                void OnMessage(const CJOBXmessage& message) override { const CString line(message.Line()); }
            } sink;
            CJOBXreading reading;
            reading.way = JOBXway::Complete;
            reading.pSink = &sink;
            job.SetReading(reading);
            job.ParseODBOfMFC(SmallJob());
        });
    AddUse<CJOBX>(
        all, "CJOBX", "ParseMatrixInODBOfMFC and the chosen steps", [](auto&) {},
        [](auto& job)
        {
            CStringArray names;
            job.ParseMatrixInODBOfMFC(SmallJob(), names);
            job.ParseODBOfMFC(SmallJob(), names);
        });
    AddUse<CJOBX>(all, "CJOBX", "WriteODBData", read, [out = Out("job")](auto& job) { job.WriteODBData(out, 1); });
    AddUse<CJOBX>(
        all, "CJOBX", "RebuildStepObj", read, [](auto& job) { job.RebuildStepObj(); }, Memory::Sometimes);
    AddUse<CJOBX>(
        all, "CJOBX", "UnitConvert", read, [](auto& job) { job.UnitConvert(2.0); }, Memory::Sometimes);
    AddUse<CJOBX>(
        all, "CJOBX", "GetNthColumn", [](auto&) {},
        [](auto& job)
        {
            job.GetNthColumn(kLong, 2);
            job.FindSpecialSymbolID(kLong);
            job.SetODBProjectName(kLong);
        });
    all.push_back({"CODB", "pMakeCompactModel",
                   [read](MemoryRun& run)
                   {
                       CJOBX job;
                       read(job);
                       std::unique_ptr<CODB> made;
                       const bool done = run.Try([&] { made.reset(pMakeCompactModel(job, CString("PCB"))); });
                       EXPECT_EQ(made != nullptr, done);
                   }});
}
} // namespace

MemoryOperations JobOperations()
{
    MemoryOperations all;
    AddMatrix(all);
    AddSystemAttributes(all);
    AddHeader(all);
    AddStep(all);
    AddRoot(all);
    return all;
}
