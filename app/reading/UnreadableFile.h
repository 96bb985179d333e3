#pragma once

#include "JOBXCLSDLL.h"

#include <string>

// Why an existing file cannot be read, as the end of a sentence: "is a broken link". "" if it can.
std::string ReasonNotToRead(const CString& path);

// Whether links lead from the path to a place outside the job, which is then not read.
bool LeadsOutOfJob(const CString& path);
