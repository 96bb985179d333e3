#pragma once

#include "compact/CODB.h"

class CJOBX;
class CJOBXstepObj;

// Makes the compact model of one step of a job.
//
// Copies every record, in order, with every member that both models have. From the job: source, user symbols, matrix
// layers and system attributes. From the step: the profile (as the single layer), the layers with features, attributes
// and tables, the components, the EDA data, the netlist, and the header with its step-and-repeat table (as the only
// header). The compact model has no room for the font, the matrix columns, the other job information, and the drill
// tools and components of a layer. Null entries are left out.
//
// The components files of a step become one components part with merged attribute tables. A number that an earlier file
// uses for another text is replaced by a free one, in the attributes too. A component without a side gets 0 from a
// layer "comp_+_bot" and 1 from "comp_+_top", ignoring letter case. The part takes layer name and path from the file if
// there is only one, else they are empty.
//
// Units:     lengths are not converted. The units text of a layer, profile or user symbol becomes what the compact
//            model understands: a leading "UNITS=" is dropped, letters become upper case. The units texts of
//            components, EDA data and netlist do not change, and reading never sets them. If those files are not in
//            inch, the host sets the texts before it calls CODB::vChangeUnit. Factors are 1.
// Ownership: the caller owns the result, which shares nothing with the job.
// Results:   null for a null step, or if no step of the job has that name. Exhausted memory raises CMemoryException.
//            The job does not change.
// Threads:   calls may run at once as long as the job does not change.
JOBX_API CODB* pMakeCompactModel(const CJOBX& job, const CJOBXstepObj* step);
// As above, for the first step of that name, ignoring the case of ASCII letters.
JOBX_API CODB* pMakeCompactModel(const CJOBX& job, const CString& stepName);
