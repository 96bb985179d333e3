#pragma once

#include "foundation/CJOBXkeyed.h"
#include "foundation/framework/CRaisingNew.h"
#include "job/CJOBXmatrixLayer.h"
#include "job/CJOBXmatrixStep.h"

// A job's table of steps (columns) and layers (rows): the file "matrix" of the job's folder "matrix".
// Ownership: owns its steps and layers. Not copyable.
// Results:   the reader returns 1, or 0 for a missing or unreadable file and then changes nothing. A malformed number
//            reads as 0. Lookups that find nothing return null or ""; pointers are borrowed. Exhausted memory raises
//            CMemoryException and keeps what was read before.
// Its further keys are those outside of steps and layers. A key of a block with another name has that name and a dot in
// front.
class JOBX_API CJOBXmatrix : public CRaisingNew, public CJOBXkeyed
{
public:
    CJOBXmatrix();
    CJOBXmatrix(const CJOBXmatrix&) = delete;
    CJOBXmatrix& operator=(const CJOBXmatrix&) = delete;
    virtual ~CJOBXmatrix();

    // Appends the steps and layers of the file "matrix" in this folder. The case of its name is ignored.
    int ParseODBOfMFC(const CString& matrixDirectory);
    // Replaces the folder "matrix" of this job folder, with everything in it, by one with the written matrix. A folder
    // or file that cannot be made is skipped silently.
    void WriteODBData(const CString& jobDirectory) const;

    // The type text of the layer at `index`. An index outside the list raises CInvalidArgException.
    CString sGetMatrixLayerType(int index) const;
    // The first and the last layer that is a signal layer of the board, or a power or ground layer of any context.
    // Requiring the context of signal layers only is intended. Words are compared exactly. "" if there is no such
    // layer.
    CString GetTopLayerName() const;
    CString GetBottomLayerName() const;
    // Converts `name` itself to upper case and finds the first layer of exactly that name. A layer whose stored name
    // has lower-case letters is never found; this is intended.
    CJOBXmatrixLayer* pGetMatrixLayerFromName(CString& name) const;
    // The first layer of that name, ignoring letter case.
    CJOBXmatrixLayer* GetMatrixLayerFromName(const CString& name) const;

    CJOBXmatrixStepArray m_arrSteps;   // in file order
    CJOBXmatrixLayerArray m_arrLayers; // in file order
};
