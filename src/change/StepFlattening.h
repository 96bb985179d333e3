#pragma once

#include "change/CJOBXresult.h"
#include "foundation/framework/CString.h"

class CJOBX;

// Turns the step-repeats of a step, nested ones too, into copies of their contents: it then has their features, nets,
// components, packages and netlist points, and no step-repeat. The profile and the other steps do not change. Only for
// jobs that were read completely.
//
// Placing:   the datum of a step comes to its place, turned clockwise, then mirrored (x changes its sign). A mirrored step
//            in a mirrored one is not mirrored. FLIP exchanges the layers of both sides in the order of the matrix, the
//            components and the sides of test points; it does not mirror, that is what MIRROR says.
// Names:     copy n of a net or component is NAME#n; n counts the placements as `jobx panel` does: a placement comes
//            before those in it. The net $NONE$ is one net.
// Merging:   what the step has keeps its place in front of the copies. Symbols, attributes, tools and packages that are
//            equal are shared. A file in another unit is converted to that of the step's file. Copies have no unique
//            numbers. All references are those of the copy.
// Results:   refused if the job was not read completely, has no such step, or a repeated step is missing; if a step
//            repeats itself; if there are more than 100000 placements or 20 million features; and if a flipped layer with
//            features has no counterpart. Exhausted memory raises CMemoryException and may leave the step half flattened.
// Threads:   one thread calls for each job.
JOBX_API CJOBXresult FlattenStep(CJOBX& job, const CString& stepName);
