#pragma once

#include "components/CJOBXcomponents.h"
#include "foundation/CJOBXattributeList.h"
#include "foundation/CJOBXfoldered.h"
#include "foundation/base/CExPtrArray.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"
#include "layer/CJOBXlayer.h"

#include <memory>

class CJOBXdataNetArray;
class CJOBXeda;
class CJOBXnetlist;
class CJOBXnetlistArray;
class CJOBXstephdr;
class CWnd;

// One step of a job, read from the directory of its name below "steps": profile, header, layers, components, EDA data
// and netlist.
// Units:     each file's own; UnitConvert multiplies every length of profile, layers, components, packages and netlist.
//            It does not convert the header and the EDA nets; this is intended.
// Ownership: owns all its parts; borrows the status window; not copyable. The caller deletes the arrays that the scans
//            return. A scan moves records into them, out of the step.
// Results:   a missing part of a step is not an error. Exhausted memory raises CMemoryException.
// Threads:   one thread calls; layers are read and files are written on a team of worker threads.
class JOBX_API CJOBXstepObj : public CRaisingNew, public CJOBXattributed, public CJOBXfoldered
{
public:
    CJOBXstepObj();
    CJOBXstepObj(const CJOBXstepObj&) = delete;
    CJOBXstepObj& operator=(const CJOBXstepObj&) = delete;
    virtual ~CJOBXstepObj();

    // Reads the step's directory and appends its contents. Returns 0 if it has no profile, and then reads nothing.
    // Reports to the status window, if any, after each stage.
    int ParseODBOfMFC(CString stepDirectory);
    // Writes the step into a directory of its name below `stepsDirectory`. An existing one is first deleted with
    // everything in it. EDA data and netlist are written only if `withEda` is not 0. A step whose name is not a plain
    // directory name is not written. Neither is anything that cannot be created or opened; the diagnostics say why.
    void WriteODBData(CString stepsDirectory, int withEda) const;
    // Multiplies the lengths of profile, layers, components, packages and netlist by `factor`.
    void UnitConvert(const double& factor);

    // Moves the components whose package reference is `id` out of the step's files, into one new file, with the same
    // tables, for each file that has any. Null if there are none. Moving is intended: a second call finds nothing.
    CJOBXcomponentsArray* ScaneODBComponents(int id);
    // Moves the toeprint subnets of that component and side out of the step's nets, into new nets of the same names.
    // Null if there are none.
    CJOBXdataNetArray* ScanUsedODBcmpIDDataIndataNet(int componentNumber, CString side);
    // The first layer of that name, ignoring the case of ASCII letters; borrowed, null if there is none.
    CJOBXlayer* ScanLayerObjDataInLayer(CString layerName) const;

    // The parts, borrowed.
    CJOBXlayer* GetProfile() const { return m_pProfile; }
    CJOBXstephdr* GetHeader() const { return m_pHeader; }
    CJOBXeda* GetEda() const { return m_pEda; }
    CJOBXnetlist* GetNetlist() const { return m_pNetlist; }
    // The netlists beside "cadnet", in the order of their folders; borrowed. Null if there are none, and after classic
    // reading.
    const CJOBXnetlistArray* pGetFurtherNetlists() const noexcept { return m_pFurtherNetlists.get(); }
    // The list for changes, borrowed; made if there is none.
    CJOBXnetlistArray* pMakeFurtherNetlists();

    // Pointers to parts are never null. A host may delete a part and put another object in its place.
    CWnd* m_pStatus = nullptr;
    CString m_sName; // as the matrix spells it
    CJOBXlayer* m_pProfile = nullptr;
    CJOBXstephdr* m_pHeader = nullptr;
    CJOBXlayerArray m_arrLayers;          // in the order of the directory listing
    CJOBXcomponentsArray m_arrComponents; // likewise, one per components file
    CJOBXeda* m_pEda = nullptr;
    CJOBXnetlist* m_pNetlist = nullptr;

private:
    void ReadLayers(const CString& layersDirectory);
    void ReadEda(const CString& stepDirectory);
    void ReadNetlist(const CString& stepDirectory);

    std::unique_ptr<CJOBXnetlistArray> m_pFurtherNetlists;
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
