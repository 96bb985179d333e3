// What jobx prints on standard error about the sample and about a copy with faults in every kind of file.
#include "RunProgram.h"
#include "support/Golden.h"
#include "support/TestPaths.h"

#include <gtest/gtest.h>

#include <vector>

namespace jobx_messages_test
{
struct Fault
{
    const char* file;
    const char* from;
    const char* to;
};

// One or two in each kind of file.
const std::vector<Fault>& Faults()
{
    static const std::vector<Fault> faults = {
        {"matrix/matrix", "    ROW=3\n", "    ROW=2\n"},
        {"matrix/matrix", "POLARITY=POSITIVE", "POLARITY=INVERSE"},
        {"misc/info", "ODB_VERSION_MAJOR=7", "ODB_VERSION_MAJOR=seven"},
        {"misc/info", "SAVE_USER", "COLOUR=red\nSAVE_USER"},
        {"misc/attrlist", "0.062", "thin"},
        {"misc/sysattr", "}\n", ""},
        {"fonts/standard", "CHAR A\n", "CHAR B\n"},
        {"symbols/led_mark/features", "SE\n", ""},
        {"steps/panel/stephdr", "NX=2", "NX=0"},
        {"steps/panel/stephdr", "    NAME=PCB", "    NAME=BOARD"},
        {"steps/pcb/profile", "OS ", "OS x"},
        {"steps/pcb/attrlist", ".comment = ", ".comment "},
        {"steps/pcb/layers/top/features", "\nP ", "\nP x"},
        {"steps/pcb/layers/top/features", "&0 ", "&90 "},
        {"steps/pcb/layers/drill/tools", "TYPE=VIA", "TYPE=GILDED"},
        {"steps/pcb/layers/comp_+_bot/components", "TOP 0 ", "TOP 9 "},
        {"steps/pcb/eda/data", "NET VCC", "NET gnd"},
        {"steps/pcb/eda/data", "FID C 0 ", "FID C 99 "},
        {"steps/pcb/netlists/cadnet/netlist", "$1 ", "$2 "},
    };
    return faults;
}

std::string DamagedSample(const TempDir& directory)
{
    CopySample(directory);
    for (const Fault& fault : Faults())
    {
        const std::string file = std::string("blinker/") + fault.file;
        std::string text = directory.Read(file);
        const std::size_t at = text.find(fault.from);
        EXPECT_NE(at, std::string::npos) << file << " has no " << fault.from;
        directory.Write(file, text.replace(at, std::string_view(fault.from).size(), fault.to));
    }
    return directory.Path("blinker");
}

// With JOB in place of the job's path.
std::string ErrOf(const std::vector<std::string>& arguments, const std::string& job)
{
    std::string text = RunJobx(arguments).err;
    for (std::size_t at = text.find(job); at != std::string::npos; at = text.find(job))
        text.replace(at, job.size(), "JOB");
    return text;
}

TEST(JobxMessages, OfTheSampleAndOfADamagedCopyAreTheKnownOnes)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const TempDir other;
    const std::string damaged = DamagedSample(other);
    const TempDir actual;
    actual.Write("messages/sample.txt", ErrOf({"json", job, "--messages", "all", "--strict"}, job));
    actual.Write("messages/damaged.txt", ErrOf({"json", damaged}, damaged));
    actual.Write("messages/damaged_all.txt", ErrOf({"json", damaged, "--messages", "all"}, damaged));
    actual.Write("messages/damaged_strict.txt", ErrOf({"info", damaged, "--strict", "--messages", "none"}, damaged));
    ExpectSameFolder(actual.Path("messages"), TestDataDir() + "/app/messages");
}

TEST(JobxMessages, OfTheRealJobsAreTheKnownOnes)
{
    JOBX_REQUIRE_REAL_JOBS(jobs);
    EXPECT_EQ(RunJobx({"json", jobs + "/flat_hierarchy", "--messages", "all"}).err, "");
    EXPECT_EQ(RunJobx({"json", jobs + "/beagleboneblack", "--messages", "all"}).err, "");
}

TEST(JobxMessages, OfTheSessionInTheGuideAreWhatItShows)
{
    const TempDir directory;
    const std::string job = CopySample(directory);
    const std::string guide = FileBytes(std::string(JOBX_DOCS_DIR) + "/messages.md");
    const std::size_t begin = guide.find("$ sed -i");
    const std::size_t end = guide.find("```", begin);
    ASSERT_NE(end, std::string::npos);
    std::string commands;
    std::string shown;
    for (const std::string& line : LinesOf(guide.substr(begin, end - begin)))
        (line.starts_with("$ ") ? commands : shown) += (line.starts_with("$ ") ? line.substr(2) : line) + "\n";
    const std::size_t program = commands.find("jobx ");
    ASSERT_NE(program, std::string::npos);
    commands.replace(program, 4, "\"$JOBX\"");
    const ProgramResult result =
        RunShell("cd " + ShellWord(directory.Path(".")) + " && mv blinker faulty\n" + commands);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, shown);
}
} // namespace jobx_messages_test
