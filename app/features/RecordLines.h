#pragma once

#include "JOBXCLSDLL.h"

#include <string>
#include <vector>

// On which lines of a features file its records are.
struct RecordLines
{
    std::string file;       // below the job
    std::vector<int> lines; // of the records, by their index, counted from 1; empty for a compressed file
};

// Reads the file of the layer again, because the records in memory do not know their lines.
RecordLines FindRecordLines(const std::string& jobPath, const CString& step, const CString& layer);
