#pragma once

#include "change/CJOBXresult.h"
#include "foundation/framework/CStringArray.h"

class CJOBX;

// Remove parts of a job that was read completely, with everything that refers to them: rows and columns of the matrix,
// folders, step-repeats, spans of drills, layers and features of the EDA data, numbers of nets and components. What is
// left is a job of its own. User symbols stay, whether or not a feature still uses them.
// Names:     of steps and layers, compared without the case of ASCII letters. A layer is a row of the matrix or a folder
//            of any step.
// Results:   refused if the job has no step or layer of a name, and if no step or no layer would be left. Exhausted memory
//            raises CMemoryException and may leave the job half changed.
// Threads:   one thread calls for each job.

// Keeps these steps; step-repeats of the others go.
JOBX_API CJOBXresult KeepSteps(CJOBX& job, const CStringArray& names);
// Keeps these layers.
JOBX_API CJOBXresult KeepLayers(CJOBX& job, const CStringArray& names);
// Removes these layers. A span that began or ended at one of them begins or ends at the next copper layer inside it; if
// there is none, the span becomes empty. Rows and columns close up. The subnets of pins become traces where the
// components go.
JOBX_API CJOBXresult DropLayers(CJOBX& job, const CStringArray& names);

// What DropPart removes from all steps and, where it applies, from the job as a whole.
enum class JOBXjobPart
{
    Attributes, // of the job, steps, layers, symbols and all records, with their tables
    Components, // with their layers and packages
    Eda,        // nets, packages, feature groups and intended shorts
    Fonts,      // the font
    Netlists,   // all of every step
    Nets,       // of the EDA data, with the netlists and intended shorts
    Notes,      // the files "notes" of layers
    Others,     // files that the library does not read
    Properties, // of components, nets, packages and feature groups
};
// Removes that part of the job.
JOBX_API void DropPart(CJOBX& job, JOBXjobPart part);
