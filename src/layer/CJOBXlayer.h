#pragma once

#include "foundation/CJOBXattributeList.h"
#include "foundation/CJOBXfoldered.h"
#include "foundation/CJOBXidentified.h"
#include "foundation/CJOBXunit.h"
#include "foundation/base/CExPtrArray.h"
#include "foundation/corekit/CArrayN.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/CStringArray.h"
#include "layer/CJOBXlayObj.h"

#include <memory>

class CJOBXcomponentsArray;
class CJOBXtool;

// One features file in memory: the features of a layer, a step's profile or a user symbol, with the file's tables. Each
// table is a pair of parallel arrays, numbers and texts.
// Units:     lengths in the unit of the file; a unit change multiplies them but keeps the units text.
// Ownership: owns its features, components and drill tools; not copyable.
class JOBX_API CJOBXlayer : public CRaisingNew,
                            public CJOBXmeasured,
                            public CJOBXidentified,
                            public CJOBXattributed,
                            public CJOBXfoldered
{
public:
    CJOBXlayer();
    CJOBXlayer(const CJOBXlayer&) = delete;
    CJOBXlayer& operator=(const CJOBXlayer&) = delete;
    virtual ~CJOBXlayer();

    // Reads the features file at `path` and appends its contents. Always returns 1: if the file cannot be opened, the
    // layer does not change, and malformed lines never stop the reader. Exhausted memory raises CMemoryException.
    int ParseODBOfMFC(CString path);
    // If `isLayer` is not 0, writes the file "features" into `folder`, with the drill tools and the layer's own
    // components beside it; else writes the file "profile". If `recreateFolder` is 1, the folder is first deleted with
    // everything in it and made again. A layer with a copper weight or dielectric value above 0 also gets its attribute
    // list file: in `folder` if that has the layer's name, else in the folder of that name below it. A file that cannot
    // be opened is skipped.
    void WriteODBData(CString folder, int recreateFolder, int isLayer) const;
    // Appends the properties of a feature's attribute list, with their names from this layer's tables. Items such as
    // "3" or "3=7" are separated by commas. A leading comma makes an empty item with number 0; an empty last item is
    // dropped.
    void AddPropertyData(CString attributeText, CJOBXlayObj* feature);
    // m_nFeatureLineNo, which the reader leaves at 0.
    __int64 GEtODBFeatureLineNo() const;

    // The index of the first symbol of exactly that name, -1 if there is none.
    int nGetSymbolIndex(const CString& name) const;
    // The first entry of that table with this number, "" if there is none.
    CString GetSymbolName(int number) const;
    CString GetAttributeName(int number) const;
    CString GetAttributeText(int number) const;
    // The unit of the lengths in the name of that symbol: its own if its entry has one, else that of the file. Only for
    // layers that were read completely.
    JOBXunit GetSymbolUnit(int number) const;
    // Multiply the numbers in the name of that symbol, which are mils or microns, by this to get millimetres. Only for
    // layers that were read completely.
    double dGetSymbolFactorToMM(int number) const { return JOBXfactorToMM(GetSymbolUnit(number)) / 1000.0; }
    // The index, from `n` on, of the first feature whose surface index is `n`; -1 if there is none or `n` is not a
    // valid index.
    int nGetLayObjIndexFromSurfaceIndex(int n) const;
    // The via pad stack name of the feature at index `i`; "" for a bad index.
    CString GetViaPadStackName(int i) const;

    // Multiplies the lengths of every feature by the rescale factor.
    void vRescale();
    // Multiplies the lengths of every feature, component and drill tool.
    void UnitConvert(const double& factor);

    // The features, borrowed.
    CJOBXlayObjArray* GetFeatures() { return &m_arrFeatures; }
    const CJOBXlayObjArray* GetFeatures() const { return &m_arrFeatures; }
    // The layer's own components, borrowed. Empty unless a host fills it.
    CJOBXcomponentsArray* GetComponents() const { return m_pComponents.get(); }
    // The drill tools, borrowed. Empty unless complete reading or a host fills them.
    CJOBXtool* GetTool() const { return m_pTool.get(); }

    CString m_sName;
    double m_dRescaleFactor = 1.0;
    CString m_sUnits = "INCH";        // the text of the units line; all of "UNITS=MM", intended
    CStringArray m_arrAttributeTexts; // "&" lines
    CArrayN m_arrAttributeTextNumbers;
    CStringArray m_arrAttributeNames; // "@" lines
    CArrayN m_arrAttributeNameNumbers;
    CStringArray m_arrSymbolNames; // "$" lines
    CArrayN m_arrSymbolNumbers;
    CStringArray m_arrSymbolSecondFields;     // the text after the symbol name on its line
    double m_dCopperWeightOrDielectric = 0.0; // set by hosts, written to the layer's attribute list; not a length
    __int64 m_nFirstLineNo = 0;               // for the host, as is m_nLastLineNo
    __int64 m_nLastLineNo = 0;
    __int64 m_nFeatureLineNo = 0; // returned by GEtODBFeatureLineNo

private:
    CJOBXlayObjArray m_arrFeatures;
    std::unique_ptr<CJOBXcomponentsArray> m_pComponents;
    std::unique_ptr<CJOBXtool> m_pTool;
};

extern template class JOBX_API CExPtrArray<CJOBXlayer*, CJOBXlayer*>;

// The layers of a step; owns them.
class JOBX_API CJOBXlayerArray : public COwningPtrArray<CJOBXlayer>
{
public:
    CJOBXlayerArray();
    ~CJOBXlayerArray() override;

    // The first layer of that name, ignoring the case of ASCII letters; null if there is none.
    CJOBXlayer* GetODBlayerFromName(const CString& name) const;
    // Replaces the directory "layers" of the step's directory, with everything in it, and writes each layer into a
    // directory of its name there. A layer whose name is not a plain directory name is not written.
    void WriteODBData(CString stepDirectory) const;
    // Multiplies the lengths of every layer.
    void UnitConvert(const double& factor);
};
