// How far jobs are read and written.
#pragma once

#include "output/ProgressLine.h"

#include <string>
#include <vector>

// Measures how many bytes of the job's files the library has read, from now on. Without names of steps, all steps are
// read.
ProgressMeasure ReadingMeasure(const std::string& directory, const std::vector<std::string>& steps);

// Measures how many bytes are below a directory to which the job is written, compared with those below the directory
// that it was read from.
ProgressMeasure WritingMeasure(const std::string& from, const std::string& to, const std::vector<std::string>& steps);
