// Makes small changes to a job that was read completely.
#pragma once

#include "JOBXCLSDLL.h"
#include "edit/ChangeText.h"

// Makes one change and corrects what refers to the changed records.
// Results: raises ExitError for a kind, name, member or value that does not fit, with the nearest one that does. Do not
//          use the job then.
void MakeChange(CJOBX& job, const ChangeText& change);
