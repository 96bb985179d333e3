// Makes the references of a step true again after its records were deleted, added or moved.
#pragma once

#include "reading/CMessageList.h"
#include "saving/CMendedReferences.h"

class CJOBXstepObj;

// Finds the references of the step that are no longer right. `before` is the step as it was read. A reference that has
// not changed since then means what it meant then; one that has changed means what is there now. Messages name the
// references to what is gone.
void MendReferences(const CJOBXstepObj& before, const CJOBXstepObj& now, CMessageList& messages,
                    CMendedReferences& references);
