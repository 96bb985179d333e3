#pragma once

#include "change/CJOBXresult.h"
#include "foundation/CJOBXunit.h"

class CJOBX;

// Converts a job to one unit: every length of steps, layers, components, EDA data, netlists, user symbols, drill tools
// and attributes, the names of standard symbols, and what the files say about their unit. Saving the job afterwards
// writes it in that unit. Only for jobs that were read completely; CJOBX::UnitConvert only multiplies lengths.
//
// What is in that unit already does not change at all: each file, and each symbol with a unit letter of its own, is
// converted by its own unit. The numbers in the name of a standard symbol, mils or microns, are converted, user symbols
// keep their names. Attributes are lengths if their definition in the job says so or, without one, if they are system
// attributes that measure lengths. A font in inch stays: without a units line that is the unit of a font, whatever the
// job's. Angles, counts, the width factor of texts, properties, and files that no reader takes do not change either.
//
// Lengths are rounded to 14 digits in mm and 15 in inch, so that no noise of binary arithmetic is printed. Converted
// from inch to mm and back, a length with up to 11 digits is the same number, any other within 1e-12 of its size, and
// symbols have the same names.
// Results:   refused if the job's setting is classic reading. Exhausted memory raises CMemoryException; some files are
//            converted then, and a second call converts the others, but one of them may be converted in part.
// Threads:   one thread calls.
JOBX_API CJOBXresult ConvertJobUnits(CJOBX& job, JOBXunit unit);
