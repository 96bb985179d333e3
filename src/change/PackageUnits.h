// Packages in another unit.
#pragma once

#include "foundation/CJOBXunit.h"

class CJOBX;
class CJOBXdataPkg;

// Converts every length of a package of that job, with its pins, outlines and attributes.
void ConvertPackage(const CJOBX& job, CJOBXdataPkg& package, JOBXunit to);
