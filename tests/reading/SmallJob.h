// A small sound job for tests of complete reading, and what a reading of it says.
#pragma once

#include "job/CJOBX.h"
#include "reading/RecordedMessages.h"
#include "support/TempDir.h"

#include <memory>
#include <string>
#include <vector>

class SmallJob
{
public:
    SmallJob()
    {
        dir.Write("job/matrix/matrix",
                  "STEP {\nCOL=1\nNAME=PCB\n}\nLAYER {\nROW=1\nTYPE=COMPONENT\nNAME=COMP_+_TOP\n}\n"
                  "LAYER {\nROW=2\nTYPE=SIGNAL\nNAME=TOP\n}\n");
        dir.Write("job/misc/info", "UNITS=MM\n");
        dir.Write("job/steps/pcb/profile", "S P 0\nOB 0 0 I\nOS 1 0\nOS 1 1\nOS 0 0\nOE\nSE\n");
        dir.Write("job/steps/pcb/stephdr", "X_DATUM=0\n");
        dir.Write("job/steps/pcb/layers/comp_+_top/components", "");
        dir.Write("job/steps/pcb/layers/top/features", "$0 r10\nP 1 2 0 P 0 0\n");
    }

    // Writes a file below the job; "" for a text makes it empty.
    void Write(const std::string& name, const std::string& text) const { dir.Write("job/" + name, text); }
    std::string Path(const std::string& name) const { return dir.Path("job/" + name); }
    CString JobPath() const { return CString(std::string_view(dir.Path("job"))); }

    // Reads it in this way.
    std::unique_ptr<CJOBX> Read(const CJOBXreading& reading) const
    {
        auto job = std::make_unique<CJOBX>();
        job->SetReading(reading);
        job->ParseODBOfMFC(JobPath());
        return job;
    }
    // What a complete reading says.
    std::vector<std::string> Messages() const
    {
        RecordedMessages sink;
        Read(sink.Reading());
        return sink.lines;
    }

    TempDir dir;
};
