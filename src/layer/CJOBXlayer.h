#pragma once

#include "foundation/CExPtrArray.h"
#include "foundation/CJOBXunit.h"
#include "foundation/corekit/CArrayN.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/CStringArray.h"
#include "layer/CJOBXlayObj.h"

#include <memory>

class CJOBXcomponentsArray;
class CJOBXtool;

// One features file in memory: the features of a layer, a step's profile or a user symbol, with the file's tables. Each
// number array and its text array grow together: one position is one table entry.
// Units:     lengths in the unit of the file; unit changes multiply them and never rewrite the units text.
// Ownership: owns its features, components and drill tools; not copyable.
class JOBX_API CJOBXlayer : public CRaisingNew, public CJOBXmeasured
{
public:
    CJOBXlayer();
    CJOBXlayer(const CJOBXlayer&) = delete;
    CJOBXlayer& operator=(const CJOBXlayer&) = delete;
    virtual ~CJOBXlayer();

    // Reads the features file at `path` and appends what it holds. Answers 1 always: a file that cannot be opened
    // leaves the layer as it was, and a malformed line never stops the reading. Exhausted memory raises
    // CMemoryException.
    int ParseODBOfMFC(CString path);
    // Writes the file "features" into `folder` when `isLayer` is not 0, with the drill tools and the layer's own
    // components beside it, else the file "profile". With `recreateFolder` 1 the folder is deleted with everything in
    // it and made again. A layer with a copper weight or dielectric value above 0 also gets its attribute list file: in
    // `folder` when that is named as the layer, else in the folder of that name below it. A file that cannot be opened
    // is left out.
    void WriteODBData(CString folder, int recreateFolder, int isLayer) const;
    // Appends the properties of a feature's attribute list, items such as "3" or "3=7" separated by commas, resolved
    // with this layer's tables. A comma at the front makes an empty item, number 0; an empty last item is dropped.
    void AddPropertyData(CString attributeText, CJOBXlayObj* feature);
    // The stored feature line number; the reader leaves it at 0.
    __int64 GEtODBFeatureLineNo() const;

    // The position of the first symbol name equal to `name`, case-sensitive; -1 when there is none.
    int nGetSymbolIndex(const CString& name) const;
    // The first entry of that table with this number; "" when there is none.
    CString GetSymbolName(int number) const;
    CString GetAttributeName(int number) const;
    CString GetAttributeText(int number) const;
    // The position, from `n` on, of the first feature whose surface index is `n`; -1 when `n` is no position or none
    // is.
    int nGetLayObjIndexFromSurfaceIndex(int n) const;
    // The via pad stack name of the feature at position `i`; "" for a bad position.
    CString GetViaPadStackName(int i) const;

    // Multiplies the lengths of every feature by the rescale factor.
    void vRescale();
    // Multiplies the lengths of every feature, component and drill tool.
    void UnitConvert(const double& factor);

    // The features, borrowed.
    CJOBXlayObjArray* GetFeatures() { return &m_arrFeatures; }
    const CJOBXlayObjArray* GetFeatures() const { return &m_arrFeatures; }
    // The layer's own components, borrowed: empty unless a host fills it.
    CJOBXcomponentsArray* GetComponents() const { return m_pComponents.get(); }
    // The drill tools, borrowed; without any tool unless a host sets some.
    CJOBXtool* GetTool() const { return m_pTool.get(); }

    CString m_sName;
    double m_dRescaleFactor = 1.0;
    CString m_sUnits = "INCH";        // what stood on the units line; "UNITS=MM" is kept whole, intended
    CStringArray m_arrAttributeTexts; // "&" lines
    CArrayN m_arrAttributeTextNumbers;
    CStringArray m_arrAttributeNames; // "@" lines
    CArrayN m_arrAttributeNameNumbers;
    CStringArray m_arrSymbolNames; // "$" lines
    CArrayN m_arrSymbolNumbers;
    CStringArray m_arrSymbolSecondFields;     // what follows a symbol name on its line
    double m_dCopperWeightOrDielectric = 0.0; // set by hosts, written to the layer's attribute list, no length
    __int64 m_nFirstLineNo = 0;               // a host's own, as the next
    __int64 m_nLastLineNo = 0;
    __int64 m_nFeatureLineNo = 0; // answered by GEtODBFeatureLineNo

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

    // The first layer of that name, ASCII letters of either case; null when there is none.
    CJOBXlayer* GetODBlayerFromName(const CString& name) const;
    // Replaces the directory "layers" of the step's directory, with everything in it, and writes each layer into a
    // directory of its name there. A layer whose name is no plain directory name is left unwritten.
    void WriteODBData(CString stepDirectory) const;
    // Multiplies the lengths of every layer.
    void UnitConvert(const double& factor);
};
