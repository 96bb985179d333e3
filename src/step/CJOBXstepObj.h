#pragma once

#include "components/CJOBXcomponents.h"
#include "foundation/CExPtrArray.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"
#include "layer/CJOBXlayer.h"

class CJOBXdataNetArray;
class CJOBXeda;
class CJOBXnetlist;
class CJOBXstephdr;
class CWnd;

// One step of a job: the directory of that name below "steps", with its profile, header, layers, components, EDA data
// and netlist.
// Units:     each file's own; UnitConvert multiplies every length of profile, layers, components, packages and netlist.
//            The header and the EDA nets are not converted: intended.
// Ownership: owns all its parts; borrows the status window; not copyable. The arrays that the scans answer belong to
//            the caller, who deletes them; what a scan moves into them is no longer the step's.
// Results:   a missing part of a step is no error. Exhausted memory raises CMemoryException.
// Threads:   one thread calls; layers are read and files are written on a team of worker threads.
class JOBX_API CJOBXstepObj : public CRaisingNew
{
public:
    CJOBXstepObj();
    CJOBXstepObj(const CJOBXstepObj&) = delete;
    CJOBXstepObj& operator=(const CJOBXstepObj&) = delete;
    virtual ~CJOBXstepObj();

    // Reads the step's directory and appends what it holds; 0 when it has no profile, and then nothing is read. The
    // status window, when there is one, is told after each stage.
    int ParseODBOfMFC(CString stepDirectory);
    // Writes the step into a directory of its name below `stepsDirectory`, which is deleted with everything in it and
    // made again; its EDA data and its netlist only when `withEda` is not 0. A step whose name is no plain directory
    // name is left unwritten, and so is what cannot be made or opened; the diagnostics say why.
    void WriteODBData(CString stepsDirectory, int withEda) const;
    // Multiplies the lengths of profile, layers, components, packages and netlist by `factor`.
    void UnitConvert(const double& factor);

    // Moves the components whose package reference is `id` out of the step's files, into new files with the same
    // tables, one for each file that had any. Null when there are none. The move is intended: a second call finds
    // nothing.
    CJOBXcomponentsArray* ScaneODBComponents(int id);
    // Moves the toeprint subnets of that component and side out of the step's nets, into new nets with the same names.
    // Null when there are none.
    CJOBXdataNetArray* ScanUsedODBcmpIDDataIndataNet(int componentNumber, CString side);
    // The first layer of that name, ASCII letters of either case, borrowed; null when there is none.
    CJOBXlayer* ScanLayerObjDataInLayer(CString layerName) const;

    // The parts, borrowed.
    CJOBXlayer* GetProfile() const { return m_pProfile; }
    CJOBXstephdr* GetHeader() const { return m_pHeader; }
    CJOBXeda* GetEda() const { return m_pEda; }
    CJOBXnetlist* GetNetlist() const { return m_pNetlist; }

    // The pointers to parts are never null; a host may put another object in the place of one that it deletes.
    CWnd* m_pStatus = nullptr;
    CString m_sName; // as the matrix spells it
    CJOBXlayer* m_pProfile = nullptr;
    CJOBXstephdr* m_pHeader = nullptr;
    CJOBXlayerArray m_arrLayers;          // in the order of the directory listing
    CJOBXcomponentsArray m_arrComponents; // likewise, one for each components file
    CJOBXeda* m_pEda = nullptr;
    CJOBXnetlist* m_pNetlist = nullptr;

private:
    void ReadLayers(const CString& layersDirectory);
    void ReadEda(const CString& stepDirectory);
    void ReadNetlist(const CString& stepDirectory);
};

extern template class JOBX_API CExPtrArray<CJOBXstepObj*, CJOBXstepObj*>;

// The steps of a job; owns them.
class JOBX_API CJOBXstepObjArray : public COwningPtrArray<CJOBXstepObj>
{
public:
    CJOBXstepObjArray();
    ~CJOBXstepObjArray() override;
    // Writes every step below `directory`, in order.
    void WriteODBData(CString directory, int withEda) const;
    // Converts every step.
    void UnitConvert(const double& factor);
};
