#include "CompleteReading.h"

#include "JOBXCLSDLL.h"
#include "Scratch.h"

#include <algorithm>
#include <string>

namespace
{
constexpr double kToMillimetres = 25.4;
constexpr ULONGLONG kLargestFile = 1U << 20U;

constexpr char kMatrixFile[] = "matrix/matrix";
constexpr char kSmallMatrix[] = "STEP {\nCOL=1\nNAME=PCB\n}\nLAYER {\nROW=1\nTYPE=SIGNAL\nNAME=TOP\n}\n";
constexpr char kProfileFile[] = "steps/pcb/profile";

class CheckingSink : public CJOBXmessageSink
{
    void OnMessage(const CJOBXmessage& message) override
    {
        Require(message.kind != nullptr && !message.text.IsEmpty(), "a message has a kind and a text");
        Require(message.Line().FindOneOf("\n\r") < 0, "a message is one line");
        Require(message.line >= 0, "a message is about a line of its file");
    }
};

void MakeFile(const std::string& job, const std::string& file, std::string_view bytes)
{
    ScratchDir(job + "/" + file.substr(0, file.rfind('/')));
    ScratchFile(job + "/" + file, bytes);
}
} // namespace

void ReadJobCompletely(const char* directory)
{
    const auto before = SetMessageBoxHandler([](CWnd*, LPCSTR, LPCSTR, UINT) { return 1; });
    CheckingSink sink;
    CJOBX job;
    job.SetReading({.way = JOBXway::Complete, .pSink = &sink, .nExpansionLimit = kLargestFile});
    job.ParseODBOfMFC(directory);
    job.UnitConvert(kToMillimetres);
    SetMessageBoxHandler(before);
}

void ReadFileCompletely(const char* file, std::string_view input)
{
    std::string job = std::string("completely_") + file;
    std::replace(job.begin(), job.end(), '/', '_');
    MakeFile(job, kMatrixFile, kSmallMatrix);
    MakeFile(job, kProfileFile, "");
    MakeFile(job, file, input);
    ReadJobCompletely(ScratchPath(job));
}
