#include "ChildProcess.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <system_error>

namespace
{
double Seconds(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

void Check(int error, const std::string& what)
{
    if (error != 0)
        throw std::system_error(error, std::generic_category(), what);
}
} // namespace

Usage RunChild(const std::vector<std::string>& arguments, const std::string& output)
{
    std::vector<char*> argv;
    argv.reserve(arguments.size() + 1);
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    Check(posix_spawn_file_actions_init(&actions), "spawn");
    int error =
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    pid_t child = 0;
    const auto begin = std::chrono::steady_clock::now();
    if (error == 0)
        error = posix_spawn(&child, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    Check(error, arguments.front());

    int status = 0;
    rusage used{};
    while (wait4(child, &status, 0, &used) < 0)
        if (errno != EINTR)
            Check(errno, "wait");
    Usage usage;
    usage.elapsedSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    usage.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    usage.processorSeconds = Seconds(used.ru_utime) + Seconds(used.ru_stime);
    usage.peakBytes = static_cast<double>(used.ru_maxrss) * 1024.0;
    return usage;
}
