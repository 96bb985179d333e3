// What the fuzzing engine calls; built once for each target, whose name JOBX_FUZZ_TARGET is.
#include "FuzzTargets.h"

#include "Scratch.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const FuzzTarget* const target = FindFuzzTarget(JOBX_FUZZ_TARGET);
    Require(target != nullptr, "there is a target of that name");
    target->run({reinterpret_cast<const char*>(data), size});
    return 0;
}
