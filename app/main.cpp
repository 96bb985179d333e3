#include "CommandLine.h"
#include "JOBXCLSDLL.h"
#include "output/CleanEnd.h"
#include "output/ExitError.h"
#include "output/Messages.h"
#include "output/Text.h"

#include <csignal>
#include <cstdio>
#include <exception>
#include <new>

#if !defined(_WIN32)
#include <sys/resource.h>
#endif

namespace
{
constexpr unsigned long kLeastStack = 256UL * 1024; // bytes; with less, buffers of the library may not fit

int End(ExitCode code, const std::string& line)
{
    PrintError(line);
    return static_cast<int>(code);
}

// Ends by SIGPIPE, like a program that ignores closed pipes: a shell shows no message and sees 141.
int EndByClosedPipe()
{
#if defined(SIGPIPE)
    std::signal(SIGPIPE, SIG_DFL);
    std::raise(SIGPIPE);
    return 128 + SIGPIPE; // the parent process blocks the signal
#else
    return static_cast<int>(ExitCode::UnwritableOutput);
#endif
}

// Allocates nothing.
int EndWithoutMemory()
{
    std::fputs("jobx: out of memory\n", stderr);
    return static_cast<int>(ExitCode::OutOfMemory);
}

bool IsStackLargeEnough()
{
#if defined(_WIN32)
    return true;
#else
    ::rlimit limit = {};
    return ::getrlimit(RLIMIT_STACK, &limit) != 0 || limit.rlim_cur >= kLeastStack;
#endif
}
} // namespace

int main(int argc, char** argv)
{
#if defined(SIGPIPE)
    std::signal(SIGPIPE, SIG_IGN); // writing to a closed pipe then fails like any other write
#endif
#if defined(SIGXFSZ)
    std::signal(SIGXFSZ, SIG_IGN); // so does writing beyond the allowed size of a file
#endif
    EndCleanlyBySignals();
    if (!IsStackLargeEnough())
        return End(ExitCode::OutOfMemory, "the stack is limited to less than 256 KB (ulimit -s)");
    CKUtility::GetInstance()->SetDiagnosticSink(nullptr); // each command sets its own and reports failures itself
    try
    {
        return static_cast<int>(RunCommandLine(argc, argv));
    }
    catch (const ClosedPipe&)
    {
        return EndByClosedPipe();
    }
    catch (const ExitError& error)
    {
        return End(error.Code(), error.what());
    }
    catch (CMemoryException* exception)
    {
        exception->Delete();
        return EndWithoutMemory();
    }
    catch (const std::bad_alloc&)
    {
        return EndWithoutMemory();
    }
    catch (CException* exception)
    {
        const std::string reason = Printable(exception->GetMessageText().View());
        exception->Delete();
        return End(ExitCode::InternalError, "internal error: " + reason);
    }
    catch (const std::exception& exception)
    {
        return End(ExitCode::InternalError, "internal error: " + Printable(exception.what()));
    }
    catch (...)
    {
        return End(ExitCode::InternalError, "internal error");
    }
}
