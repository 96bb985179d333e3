// Makes calls of the library to the file system fail, one after the other.
#pragma once

#include <functional>
#include <string>
#include <vector>

// What the system does all the time.
enum class CallFault
{
    None,
    Interrupted, // read is told once that a signal came
    Short,       // read gives one byte at a time
    Untold       // a listing does not say what its entries are, as on some file systems
};

// While it lives, the library's calls to the file system are counted, and one of them goes wrong, or all of a kind. The
// linker sends the calls of this program to the counting ones; what the standard library calls itself is not concerned,
// so that the tests' own files are safe.
// Threads: counts the whole process; make one at a time.
class FailingCalls
{
public:
    static constexpr long kNone = -1;

    // The call of that number, from 0 on, fails with the system's error number; kNone only counts.
    explicit FailingCalls(long number, int error = 5 /* EIO */, CallFault always = CallFault::None);
    explicit FailingCalls(CallFault always);
    // The work is done before the call of that number: what other programs may do at that moment.
    FailingCalls(long number, std::function<void()> work);
    ~FailingCalls();
    FailingCalls(const FailingCalls&) = delete;
    FailingCalls& operator=(const FailingCalls&) = delete;

    // The calls made so far, by name.
    std::vector<std::string> Made() const;
    // The name of the call that failed; "" when none did.
    std::string Failed() const;
};
