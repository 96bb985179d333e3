// What is fuzzed: one function for each kind of bytes that the library takes from strangers.
#pragma once

#include <span>
#include <string_view>

struct FuzzTarget
{
    const char* name;
    // Reads the bytes and does with what was read what a host would do. Comes back, or ends the process: no exception
    // leaves it but those that are findings.
    void (*run)(std::string_view input);
};

std::span<const FuzzTarget> FuzzTargets();

// Null when there is none of that name.
const FuzzTarget* FindFuzzTarget(std::string_view name);

void FuzzFeatures(std::string_view input);
void FuzzEdaData(std::string_view input);
void FuzzComponents(std::string_view input);
void FuzzNetlist(std::string_view input);
void FuzzMatrix(std::string_view input);
void FuzzStephdr(std::string_view input);
void FuzzFont(std::string_view input);
void FuzzInfo(std::string_view input);
void FuzzSysattr(std::string_view input);
void FuzzAttrlist(std::string_view input);
void FuzzTools(std::string_view input);
void FuzzDecompress(std::string_view input);
void FuzzNumbers(std::string_view input);
void FuzzProperties(std::string_view input);
void FuzzJob(std::string_view input);
