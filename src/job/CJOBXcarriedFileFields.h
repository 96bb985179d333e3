#pragma once

#include "foundation/base/RecordFields.h"
#include "job/CJOBXcarriedFile.h"

// The fields of CJOBXcarriedFile.
template <>
struct jobx::Fields<CJOBXcarriedFile>
{
    static constexpr RecordName kName{"carriedFile", "A file that no reader took", "file", "file"};
    static constexpr auto kList = std::tuple{
        Text("path", "Below the job, with / between its parts", &CJOBXcarriedFile::GetPath, &CJOBXcarriedFile::SetPath)
            .Shown("path")
            .AsName(),
        Integer("size", "In bytes", &CJOBXcarriedFile::GetSize, &CJOBXcarriedFile::SetSize).Shown("size"),
    };
};
