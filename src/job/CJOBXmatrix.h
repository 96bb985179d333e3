#pragma once

#include "foundation/framework/CRaisingNew.h"
#include "job/CJOBXmatrixLayer.h"
#include "job/CJOBXmatrixStep.h"

// A job's table of steps (columns) and layers (rows): the file "matrix" of the job's folder "matrix".
// Ownership: owns its steps and layers. Not copyable.
// Results:   the reader returns 1, or 0 for a missing or unreadable file and then changes nothing; a malformed number
//            reads as 0. Lookups answer null or "" and keep what they point to. Exhausted memory raises
//            CMemoryException; what was read before stays.
class JOBX_API CJOBXmatrix : public CRaisingNew
{
public:
    CJOBXmatrix();
    CJOBXmatrix(const CJOBXmatrix&) = delete;
    CJOBXmatrix& operator=(const CJOBXmatrix&) = delete;
    virtual ~CJOBXmatrix();

    // Appends the steps and layers of the file "matrix" in this folder; its name is found in any letter case.
    int ParseODBOfMFC(const CString& matrixDirectory);
    // Replaces the folder "matrix" of this job folder, with everything in it, by one that holds the written matrix. A
    // folder or file that cannot be made is left out silently.
    void WriteODBData(const CString& jobDirectory) const;

    // The type text of the layer at `index`; an index outside the list raises CInvalidArgException.
    CString sGetMatrixLayerType(int index) const;
    // The first and the last signal layer of the board or power or ground layer of any context: that only signal
    // layers need the context is intended. Words are compared exactly; "" when no layer qualifies.
    CString GetTopLayerName() const;
    CString GetBottomLayerName() const;
    // Turns `name` itself to upper case and finds the first layer named exactly so; a layer whose stored name has lower
    // case letters is never found. Intended.
    CJOBXmatrixLayer* pGetMatrixLayerFromName(CString& name) const;
    // The first layer of that name, letter case aside.
    CJOBXmatrixLayer* GetMatrixLayerFromName(const CString& name) const;

    CJOBXmatrixStepArray m_arrSteps;   // in file order
    CJOBXmatrixLayerArray m_arrLayers; // in file order
};
