// The table of public operations that are tried with memory running out at every place.
#pragma once

#include "foundation/framework/CException.h"
#include "foundation/framework/CString.h"
#include "support/FailingAllocation.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

// One run of an operation: the part of it that is given to Try has only so much memory.
class MemoryRun
{
public:
    MemoryRun(long succeeding, Refused refused) : m_nSucceeding(succeeding), m_refused(refused) {}

    // Whether `work` came through. What comes before and after it has all the memory there is.
    template <class Work>
    bool Try(Work work)
    {
        bool done = false;
        const FailingAllocation failing(m_nSucceeding, m_refused);
        try
        {
            work();
            done = true;
        }
        catch (CMemoryException* exception)
        {
            exception->Delete();
            raised = true;
        }
        catch (const std::bad_alloc&)
        {
            wrong = "std::bad_alloc";
        }
        catch (CException*)
        {
            wrong = "another exception of the framework";
        }
        failed = failing.HasFailed();
        return done;
    }

    bool raised = false; // the framework's memory exception
    bool failed = false; // an allocation was refused
    const char* wrong = nullptr;

private:
    long m_nSucceeding;
    Refused m_refused;
};

// What is expected of an operation.
enum class Memory
{
    Needed,    // raises whenever an allocation is refused, and makes at least one
    Sometimes, // as Needed, but its records may find room that is there already
    Useful,    // makes allocations and does without those that are refused
    NotNeeded  // makes none
};

struct MemoryOperation
{
    std::string type; // the public class, or the function's file for a free function
    std::string name;
    std::function<void(MemoryRun&)> run; // prepares, tries, and looks at what is left
    Memory memory = Memory::Needed;
};
using MemoryOperations = std::vector<MemoryOperation>;

// The records of a class are made one behind the other in larger blocks, except where memory is checked.
inline constexpr Memory kOfPool = kRecordsHaveOwnBlocks ? Memory::Needed : Memory::Sometimes;
inline constexpr char kLong[] = "a text too long to lie inside";
inline constexpr char kOther[] = "another text too long to lie inside";

// Where the operations leave their files. The directory ends with the process.
const TempDir& ScratchDir();
// The path of a small job in it, which has a record of nearly every kind.
CString SmallJob();
// A stream that drops what is written to it.
std::FILE* Nowhere();

// Each part of the table stands in its own file.
MemoryOperations FrameworkOperations();
MemoryOperations FoundationOperations();
MemoryOperations PointerArrayOperations();
MemoryOperations CompactOperations();
MemoryOperations EdaOperations();
MemoryOperations LayerOperations();
MemoryOperations JobOperations();
MemoryOperations ChangeOperations();

// Makes one with `new`.
template <class T>
void AddMaking(MemoryOperations& all, const char* type, Memory memory = Memory::Needed)
{
    all.push_back({type, "constructor",
                   [](MemoryRun& run)
                   {
                       std::unique_ptr<T> made;
                       const bool done = run.Try([&] { made = std::make_unique<T>(); });
                       EXPECT_EQ(made != nullptr, done);
                   },
                   memory});
}

// An object that `fill(object, n)` filled, and one like it. They are made once, because every run expects the source to be
// left as it was.
template <class T, class Fill>
struct CopySource
{
    explicit CopySource(Fill fill)
    {
        fill(source, 1);
        fill(twin, 1);
    }
    T source;
    T twin;
};

// Copies an object that `fill(object, n)` filled; `same(a, b)` compares. A failed copy leaves the source, and a target
// that can be assigned to again.
template <class T, class Fill, class Same>
void AddCopying(MemoryOperations& all, const char* type, Fill fill, Same same, Memory memory = Memory::Needed)
{
    const auto sourceOf = [ fill, kept = std::make_shared<std::unique_ptr<CopySource<T, Fill>>>() ]() -> auto&
    {
        if (*kept == nullptr)
            *kept = std::make_unique<CopySource<T, Fill>>(fill);
        return **kept;
    };
    const auto copyWith = [sourceOf, same](MemoryRun& run, auto copy)
    {
        auto& [source, twin] = sourceOf();
        std::unique_ptr<T> made;
        const bool done = run.Try([&, &from = source] { made.reset(copy(from)); });
        EXPECT_TRUE(same(source, twin));
        EXPECT_EQ(made != nullptr, done);
        EXPECT_TRUE(made == nullptr || same(*made, twin));
    };
    all.push_back({type, "copy constructor",
                   [copyWith](MemoryRun& run) { copyWith(run, [](const T& source) { return new T(source); }); },
                   memory});
    if constexpr (requires(const T& object) { object.clone(); })
        all.push_back({type, "clone",
                       [copyWith](MemoryRun& run) { copyWith(run, [](const T& source) { return source.clone(); }); },
                       memory});
    all.push_back({type, "operator=",
                   [sourceOf, fill, same](MemoryRun& run)
                   {
                       auto& [source, twin] = sourceOf();
                       T target;
                       fill(target, 1000);
                       const bool done = run.Try([&, &from = source] { target = from; });
                       EXPECT_TRUE(same(source, twin));
                       EXPECT_TRUE(!done || same(target, twin));
                       target = source;
                       EXPECT_TRUE(same(target, twin));
                   },
                   Memory::Sometimes}); // texts are shared
}

// Calls `use` on an object that `fill` filled.
template <class T, class Fill, class Use>
void AddUse(MemoryOperations& all, const char* type, const char* name, Fill fill, Use use,
            Memory memory = Memory::Needed)
{
    all.push_back({type, name,
                   [fill, use](MemoryRun& run)
                   {
                       T object;
                       fill(object);
                       run.Try([&] { use(object); });
                   },
                   memory});
}
