#include "RunProgram.h"

#include "support/TestPaths.h"

#include <cstdlib>
#include <filesystem>
#include <sstream>

#if !defined(_WIN32)
#include <sys/wait.h>
#endif

namespace fs = std::filesystem;

namespace
{
int ExitCodeOf(int status)
{
#if defined(_WIN32)
    return status;
#else
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
#endif
}
} // namespace

std::string ShellWord(std::string_view text)
{
    std::string word = "'";
    for (const char character : text)
        word += character == '\'' ? std::string("'\\''") : std::string(1, character);
    return word + "'";
}

ProgramResult RunShell(const std::string& commandLine)
{
    const TempDir directory;
    const std::string script = directory.Write("script", "JOBX=" + ShellWord(JOBX_PROGRAM) + "\n" + commandLine + "\n");
    const std::string out = directory.Path("out");
    const std::string err = directory.Path("err");
    const std::string command = "sh " + ShellWord(script) + " </dev/null >" + ShellWord(out) + " 2>" + ShellWord(err);
    ProgramResult result;
    result.exitCode = ExitCodeOf(std::system(command.c_str()));
    result.out = FileBytes(out);
    result.err = FileBytes(err);
    return result;
}

ProgramResult RunJobx(const std::vector<std::string>& arguments)
{
    std::string commandLine = "exec \"$JOBX\"";
    for (const std::string& argument : arguments)
        commandLine += " " + ShellWord(argument);
    return RunShell(commandLine);
}

ProgramResult RunLegacy(std::vector<std::string> arguments)
{
    arguments.emplace_back("--legacy");
    return RunJobx(arguments);
}

std::string CopySample(const TempDir& directory)
{
    const std::string path = directory.Path("blinker");
    fs::copy(fs::path(SamplesDir()) / "blinker", path, fs::copy_options::recursive);
    fs::remove(path + "/symbols/mount_ring/features"); // there if a classic reader has unpacked it
    return path;
}

std::string MakeJob(const TempDir& directory, std::string_view features)
{
    directory.Write("job/matrix/matrix",
                    "STEP {\nCOL=1\nNAME=PCB\n}\nLAYER {\nROW=1\nCONTEXT=BOARD\nTYPE=SIGNAL\nNAME=TOP\n}\n");
    directory.Write("job/steps/pcb/stephdr", "X_DATUM=0\n");
    directory.Write("job/steps/pcb/profile", "S P 0\nOB 0 0 I\nOS 1 0\nOS 1 1\nOE\nSE\n");
    // An empty file would be reported.
    directory.Write("job/steps/pcb/layers/top/features", features.empty() ? "#\n" : features);
    return directory.Path("job");
}

std::vector<std::string> LinesOf(std::string_view text)
{
    std::vector<std::string> lines;
    std::istringstream stream{std::string(text)};
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

std::vector<std::string> WordsOf(std::string_view line)
{
    std::istringstream stream{std::string(line)};
    return {std::istream_iterator<std::string>(stream), std::istream_iterator<std::string>()};
}
