#pragma once

#include "compact/CODB.h"

class CJOBX;
class CJOBXstepObj;

// Makes the compact model of one step of a job that was read; the host's way from one model to the other.
//
// Carried over, every record in its order with every member that both models have: the job's source, user symbols,
// matrix layers and system attributes; of the step the profile (as the single layer), the layers with features,
// attributes and tables, the components, the EDA data, the netlist, and the header with its step-and-repeat table (as
// the only header). The compact model has no place for the font, the matrix columns, the rest of the job information
// and a layer's drill tools and own components. Null entries are left out.
//
// The components files of a step become one components part. Their attribute tables become one: a number that stands
// for something else in an earlier file is replaced by a free one, in the attributes too. A component whose side is
// open gets 0 from a layer "comp_+_bot" and 1 from "comp_+_top", letter case aside. The part's layer name and path are
// those of the file when there is only one, else empty.
//
// Units:     lengths as they stand. The units text of a layer, profile or user symbol becomes what the compact model
//            understands: "UNITS=" before it is dropped, letters become upper case. Those of components, EDA data and
//            netlist stay as they are, and reading never sets them: where the files of a job are not in inch, the host
//            sets them before it calls CODB::vChangeUnit. Factors are 1.
// Ownership: the caller owns the result, which shares nothing with the job.
// Results:   null for a null step, and for a name that no step of the job has. Exhausted memory raises
//            CMemoryException. The job never changes.
// Threads:   the job must not change meanwhile; different calls may run at once.
JOBX_API CODB* pMakeCompactModel(const CJOBX& job, const CJOBXstepObj* step);
// The same for the first step of that name, ASCII letters of either case.
JOBX_API CODB* pMakeCompactModel(const CJOBX& job, const CString& stepName);
