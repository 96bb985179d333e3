// Features as they lie in a placed step.
#pragma once

#include "change/CPlacement.h"

#include <memory>

class CJOBXlayObj;

// Turns an orientation code, 0 to 9, and the angle of the codes 8 and 9 by a pose. A result at a right angle has one of
// the codes 0 to 7, which need no angle. An unknown code stays.
void TurnOrientation(const CPose& pose, int& code, double& angle);

// A copy, placed. Numbers of tables are those of the original. Null for a class of the host's.
//
// A mirrored contour runs the other way round: islands clockwise, holes counter-clockwise, as before.
std::unique_ptr<CJOBXlayObj> PlacedCopy(const CJOBXlayObj& feature, const CPlacedFile& file);
