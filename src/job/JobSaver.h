// Saving a completely read job.
#pragma once

#include "foundation/framework/CString.h"
#include "reading/CJOBXreading.h"

#include <functional>

class CJOBX;
struct CJobSource;

// What a job is saved from.
struct CSavedJob
{
    const CJOBX& job;
    const CJobSource* source; // null for a job that a host made from nothing
    // Reads the same parts of the job in that directory into a new object, and returns what it remembers of the files.
    std::function<const CJobSource&(const CString& directory, CJOBX& before)> readAgain;
};

// See CJOBX::SaveODBData. `reading` has the sink.
bool SaveJob(const CSavedJob& saved, const CString& outputDirectory, const CJOBXreading& reading);
