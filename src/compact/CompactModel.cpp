#include "compact/CompactModel.h"

#include "compact/NewCopy.h"
#include "eda/CJOBXcomponents.h"
#include "eda/CJOBXdata.h"
#include "eda/CJOBXdataPkgObjContour.h"
#include "eda/CJOBXeda.h"
#include "eda/CJOBXnetlist.h"
#include "job/CJOBX.h"
#include "job/CJOBXmatrix.h"
#include "job/CJOBXmisc.h"
#include "job/CJOBXsteps.h"
#include "job/CJOBXsysAttrData.h"
#include "layer/CJOBXSpecialSymbol.h"
#include "step/CJOBXstephdr.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

namespace
{
// How each record is carried over, member by member.
void Convert(const CJOBXlayObjOX& from, CODBlayObjOX& to);
void Convert(const CJOBXlayObjSurfaceOB& from, CODBlayObjSurfaceOB& to);
void Convert(const CJOBXlayer& from, CODBlayer& to);
void Convert(const CJOBXSpecialSymbol& from, CODBSpecialSymbol& to);
void Convert(const CJOBXmatrixLayer& from, CODBmatrixLayer& to);
void Convert(const CJOBXsysAttrData& from, CODBsysAttrData& to);
void Convert(const CJOBXcmpTop& from, CODBcmpToe& to);
void Convert(const CJOBXcmp& from, CODBcmp& to);
void Convert(const CJOBXdataNetObj& from, CODBdataNetObj& to);
void Convert(const CJOBXSnt& from, CODBSnt& to);
void Convert(const CJOBXdataNet& from, CODBdataNet& to);
void Convert(const CJOBXdataPkgPin& from, CODBdataPkgPin& to);
void Convert(const CJOBXdataPkg& from, CODBdataPkg& to);
void Convert(const CJOBXnetPt& from, CODBnetPt& to);
void Convert(const CJOBXnet& from, CODBnet& to);
void Convert(const CJOBXstepRepeat& from, CODBstepRepeat& to);
std::unique_ptr<CODBlayObj> Converted(const CJOBXlayObj& from);
std::unique_ptr<CODBdataPkgObj> Converted(const CJOBXdataPkgObj& from);

// Appends what Convert makes of every record; null entries are left out.
template <class From, class To>
void ConvertAll(const CExPtrArray<From*, From*>& from, COwningPtrArray<To>& to)
{
    for (__int64 i = 0; i < from.GetSize(); ++i)
        if (const From* const record = from.GetAt(i))
        {
            std::unique_ptr<To> converted = MakeNew<To>();
            Convert(*record, *converted);
            to.Own(std::move(converted));
        }
}

// The same for records of several classes: Converted makes the one that fits.
template <class From, class To>
void ConvertAllByClass(const CExPtrArray<From*, From*>& from, COwningPtrArray<To>& to)
{
    for (__int64 i = 0; i < from.GetSize(); ++i)
        if (const From* const record = from.GetAt(i))
            to.Own(Converted(*record));
}

// A units text as the compact model's mapping understands it; a job that was written before has "UNITS=" more than
// once.
CString UnitsOf(const CString& text)
{
    constexpr std::string_view kPrefix = "UNITS=";
    CString units = text;
    units.Trim();
    units.MakeUpper();
    while (units.View().starts_with(kPrefix))
    {
        units = units.Mid(static_cast<int>(kPrefix.size()));
        units.TrimLeft();
    }
    return units;
}

void Convert(const CJOBXlayObjOX& from, CODBlayObjOX& to)
{
    to.m_nLineNumber = from.GetLineNumber();
    to.m_sClockwise = from.GetClockwise();
    to.m_sPolygonType = from.GetPolygonType();
    to.m_ptCenter = from.GetCenterPoint();
    to.m_ptPoint = from.GetPoint();
    to.m_sKind = from.GetKind();
}

void Convert(const CJOBXlayObjSurfaceOB& from, CODBlayObjSurfaceOB& to)
{
    ConvertAll(*from.GetODBlayObjOXArray(), to.m_arrElements);
}

std::unique_ptr<CODBlayObj> NewPad(const CJOBXlayObjPad& from)
{
    auto to = MakeNew<CODBlayObjPad>();
    to->m_sPadName = from.GetPadName();
    to->m_nOrientation = from.GetOrientation();
    to->m_dResizeFactor = from.GetResizeFactor();
    to->m_nResizeFlag = from.GetResizeFlag();
    to->m_dAngle = from.GetRotationAngle();
    to->m_ptCenter = from.GetCenterPoint();
    return to;
}

std::unique_ptr<CODBlayObj> NewLine(const CJOBXlayObjLine& from)
{
    auto to = MakeNew<CODBlayObjLine>();
    to->m_ptEnd = from.GetEndPoint();
    to->m_ptStart = from.GetStartPoint();
    to->m_sPadName = from.GetPadName();
    return to;
}

std::unique_ptr<CODBlayObj> NewArc(const CJOBXlayObjArc& from)
{
    auto to = MakeNew<CODBlayObjArc>();
    to->m_sClockwise = from.GetClockwise();
    to->m_ptCenter = from.GetCenterPoint();
    to->m_ptEnd = from.GetEndPoint();
    to->m_ptStart = from.GetStartPoint();
    to->m_sPadName = from.GetPadName();
    return to;
}

std::unique_ptr<CODBlayObj> NewText(const CJOBXlayObjText& from)
{
    auto to = MakeNew<CODBlayObjText>();
    to->m_nVersion = from.GetVersion();
    to->m_sText = from.GetText();
    to->m_dWidthFactor = from.GetWidthFactor();
    to->m_ptSize = from.GetSize();
    to->m_nOrientation = from.GetOrientation();
    to->m_sFontName = from.GetFontName();
    to->m_ptPosition = from.GetPosition();
    to->m_dAngle = from.GetRotationAngle();
    return to;
}

std::unique_ptr<CODBlayObj> NewBarcode(const CJOBXlayObjBarcode& from)
{
    auto to = MakeNew<CODBlayObjBarcode>();
    to->m_sText = from.m_sText;
    to->m_sAstrPosition = from.m_sAstrPosition;
    to->m_sAstr = from.m_sAstr;
    to->m_sBg = from.m_sBg;
    to->m_sCs = from.m_sCs;
    to->m_sEFlag = from.m_sEFlag;
    to->m_sFasc = from.m_sFasc;
    to->m_dHeight = from.m_dHeight;
    to->m_dWidth = from.m_dWidth;
    to->m_sFontName = from.m_sFontName;
    to->m_sBarcodeName = from.m_sBarcodeName;
    to->m_nOrientation = from.m_nOrientation;
    to->m_ptPosition = from.m_ptPosition;
    return to;
}

std::unique_ptr<CODBlayObj> NewSurface(const CJOBXlayObjSurface& from)
{
    auto to = MakeNew<CODBlayObjSurface>();
    ConvertAll(*from.GetContours(), to->m_arrContours);
    return to;
}

// A feature of the class that fits, with its geometry.
std::unique_ptr<CODBlayObj> NewFeature(const CJOBXlayObj& from)
{
    if (const auto* const pad = dynamic_cast<const CJOBXlayObjPad*>(&from))
        return NewPad(*pad);
    if (const auto* const line = dynamic_cast<const CJOBXlayObjLine*>(&from))
        return NewLine(*line);
    if (const auto* const arc = dynamic_cast<const CJOBXlayObjArc*>(&from))
        return NewArc(*arc);
    if (const auto* const surface = dynamic_cast<const CJOBXlayObjSurface*>(&from))
        return NewSurface(*surface);
    if (const auto* const text = dynamic_cast<const CJOBXlayObjText*>(&from))
        return NewText(*text);
    if (const auto* const barcode = dynamic_cast<const CJOBXlayObjBarcode*>(&from))
        return NewBarcode(*barcode);
    return MakeNew<CODBlayObj>();
}

std::unique_ptr<CODBlayObj> Converted(const CJOBXlayObj& from)
{
    std::unique_ptr<CODBlayObj> to = NewFeature(from);
    for (int i = 0; i < from.nGetPropertyCount(); ++i)
        if (const CJOBXProperty* const property = from.pGetProperty(i))
            to->m_arrProperties.Own(std::unique_ptr<CJOBXProperty>(property->clone()));
    to->m_nDcode = from.GetDcode();
    to->m_sPolarity = from.GetPolarity();
    to->m_nSymbol = from.GetSymbolNumber();
    to->m_nIndex = from.GetFeatureIndex();
    to->m_nSurfaceIndex = from.GetSurfaceIndex();
    to->m_arrTexts = from.GetTexts();
    to->m_sType = from.GetType();
    to->m_nUserValue = from.GetUserValue();
    return to;
}

void Convert(const CJOBXlayer& from, CODBlayer& to)
{
    to.m_sName = from.m_sName;
    to.m_sUnits = UnitsOf(from.m_sUnits);
    ConvertAllByClass(*from.GetFeatures(), to.m_arrFeatures);
    to.m_arrAttributeTexts = from.m_arrAttributeTexts;
    to.m_arrAttributeTextNumbers = from.m_arrAttributeTextNumbers;
    to.m_arrAttributeNames = from.m_arrAttributeNames;
    to.m_arrAttributeNameNumbers = from.m_arrAttributeNameNumbers;
    to.m_arrSymbolNames = from.m_arrSymbolNames;
    to.m_arrSymbolNumbers = from.m_arrSymbolNumbers;
    to.m_arrSymbolSecondFields = from.m_arrSymbolSecondFields;
    to.m_dCopperWeightOrDielectric = from.m_dCopperWeightOrDielectric;
    to.m_nFirstLineNo = from.m_nFirstLineNo;
    to.m_nLastLineNo = from.m_nLastLineNo;
    to.m_nFeatureLineNo = from.m_nFeatureLineNo;
}

void Convert(const CJOBXSpecialSymbol& from, CODBSpecialSymbol& to)
{
    to.m_arrTexts = from.m_arrTexts;
    to.m_sName = from.m_sName;
    Convert(*from.GetLayer(), to.m_layer);
    to.m_sPath = from.m_sPath;
    to.m_sUnits = to.m_layer.m_sUnits;
}

void Convert(const CJOBXmatrixLayer& from, CODBmatrixLayer& to)
{
    to.m_sEndName = from.m_sEndName;
    to.m_sStartName = from.m_sStartName;
    to.m_sPolarity = from.m_sPolarity;
    to.m_sName = from.m_sName;
    to.m_sType = from.m_sType;
    to.m_sContext = from.m_sContext;
    to.m_sAddType = from.m_sAddType;
    to.m_sOldName = from.m_sOldName;
    to.m_sColor = from.m_sColor;
    to.m_nRow = from.m_nRow;
}

void Convert(const CJOBXsysAttrData& from, CODBsysAttrData& to)
{
    to.m_arrOptions = from.m_arrOptions;
    to.m_sName = from.m_sName;
}

void Convert(const CJOBXcmpTop& from, CODBcmpToe& to)
{
    to.m_sName = from.m_sName;
    to.m_nNet = from.m_nNet;
    to.m_nSubnet = from.m_nSubnet;
    to.m_nMirror = from.m_nMirror;
    to.m_dRotation = from.m_dRotation;
    to.m_ptLocation = from.m_ptLocation;
    to.m_nPin = from.m_nPin;
}

void Convert(const CJOBXcmp& from, CODBcmp& to)
{
    to.m_nNumber = from.m_nNumber;
    to.m_nSide = from.m_nSide;
    ConvertAll(from.m_arrTops, to.m_arrToes);
    to.m_sPartName = from.m_sPartName;
    to.m_sName = from.m_sName;
    to.m_nMirror = from.m_nMirror;
    to.m_dRotation = from.m_dRotation;
    to.m_ptLocation = from.m_ptLocation;
    to.m_nPkgRef = from.m_nPkgRef;
    to.m_arrProperties = from.m_arrProperties;
    to.m_arrAttributes = from.m_arrAttributes;
}

// One table of numbered texts, made of those of several files one after the other.
class MergedTable
{
public:
    MergedTable(CStringArray& texts, CArrayN& numbers) : m_texts(texts), m_numbers(numbers) {}

    // Adds a file's table, and from now on answers for the numbers of that file. The first one is taken as it is.
    void AddFile(const CStringArray& texts, const CArrayN& numbers)
    {
        m_ofThisFile.clear();
        const INT_PTR size = std::min<INT_PTR>(texts.GetSize(), numbers.GetSize());
        const bool isFirst = m_textOf.empty();
        for (INT_PTR i = 0; i < size; ++i)
        {
            const bool isNew = m_ofThisFile.try_emplace(numbers[i], numbers[i]).second;
            if (isFirst)
                Append(numbers[i], texts[i]);
            else if (isNew) // of several entries of one number, the first is the one that counts
                m_ofThisFile[numbers[i]] = Place(numbers[i], texts[i]);
        }
    }
    // The number in the merged table of what this number means in the last file; a number of no entry stays.
    int NumberOf(int number) const
    {
        const auto found = m_ofThisFile.find(number);
        return found == m_ofThisFile.end() ? number : found->second;
    }

private:
    void Append(int number, const CString& text)
    {
        m_texts.Add(text);
        m_numbers.Add(number);
        m_textOf.try_emplace(number, text);
        m_numberOf.try_emplace(text, number);
    }
    int Place(int number, const CString& text)
    {
        const auto taken = m_textOf.find(number);
        if (taken != m_textOf.end() && taken->second == text)
            return number;
        if (const auto known = m_numberOf.find(text); known != m_numberOf.end())
            return known->second;
        int free = number;
        if (taken != m_textOf.end())
        {
            while (m_textOf.contains(m_nextFree))
                ++m_nextFree;
            free = m_nextFree;
        }
        Append(free, text);
        return free;
    }

    CStringArray& m_texts;
    CArrayN& m_numbers;
    std::unordered_map<int, CString> m_textOf;
    std::unordered_map<CString, int> m_numberOf;
    std::unordered_map<int, int> m_ofThisFile;
    int m_nextFree = 0;
};

// The side of the components of a layer; -1 when its name does not tell.
int SideOf(const CString& layerName)
{
    if (layerName.CompareNoCase("comp_+_bot") == 0)
        return 0;
    return layerName.CompareNoCase("comp_+_top") == 0 ? 1 : -1;
}

void Convert(const CJOBXcomponentsArray& files, CODBcomponents& to)
{
    MergedTable names(to.m_arrAttributeNames, to.m_arrAttributeNameNumbers);
    MergedTable texts(to.m_arrAttributeTexts, to.m_arrAttributeTextNumbers);
    int count = 0;
    for (__int64 i = 0; i < files.GetSize(); ++i)
    {
        const CJOBXcomponents* const file = files.GetAt(i);
        if (file == nullptr)
            continue;
        to.m_sUnits = ++count == 1 ? file->m_sUnits : to.m_sUnits;
        to.m_sLayerName = count == 1 ? file->m_sLayerName : "";
        to.m_sRelativePath = count == 1 ? file->m_sRelativePath : "";
        names.AddFile(file->m_arrAttributeNames, file->m_arrAttributeNameNumbers);
        texts.AddFile(file->m_arrAttributeTexts, file->m_arrAttributeTextNumbers);
        const __int64 first = to.m_arrCmps.GetSize();
        ConvertAll(file->m_arrCmps, to.m_arrCmps);
        for (__int64 k = first; k < to.m_arrCmps.GetSize(); ++k)
        {
            CODBcmp& component = *to.m_arrCmps.GetAt(k);
            if (component.m_nSide == -1)
                component.m_nSide = SideOf(file->m_sLayerName);
            for (__int64 n = 0; n < component.m_arrAttributes.GetSize(); ++n)
            {
                CJOBXProperty& attribute = *component.m_arrAttributes.GetAt(n);
                attribute.m_nNumber = names.NumberOf(attribute.m_nNumber);
                attribute.m_nTextNumber = texts.NumberOf(attribute.m_nTextNumber);
            }
        }
    }
}

void Convert(const CJOBXdataNetObj& from, CODBdataNetObj& to)
{
    to.m_nFeatureIndex = from.m_nFeatureIndex;
    to.m_nLayerIndex = from.m_nLayerIndex;
    to.m_sKind = from.m_sKind;
    to.m_sText = from.m_sText;
    to.m_nLineNumber = from.m_nLineNumber;
}

void Convert(const CJOBXSnt& from, CODBSnt& to)
{
    to.m_nFlag = from.m_nFlag;
    to.m_nLineNumber = from.m_nLineNumber;
    ConvertAll(from.m_arrNetObjs, to.m_arrNetObjs);
    to.m_dFillSize = from.m_dFillSize;
    to.m_sCutoutType = from.m_sCutoutType;
    to.m_sFillType = from.m_sFillType;
    to.m_nToeprintNumber = from.m_nToeprintNumber;
    to.m_nComponentNumber = from.m_nComponentNumber;
    to.m_sSide = from.m_sSide;
    to.m_sKind = from.m_sKind;
    to.m_ptPosition = from.m_ptPosition;
    to.m_sText = from.m_sText;
}

void Convert(const CJOBXdataNet& from, CODBdataNet& to)
{
    to.m_nNumber = from.m_nNumber;
    ConvertAll(from.m_arrSnts, to.m_arrSnts);
    to.m_nFlag = from.m_nFlag;
    to.m_sName = from.m_sName;
    to.m_arrProperties = from.m_arrProperties;
}

// An outline of the class that fits, with its geometry.
std::unique_ptr<CODBdataPkgObj> NewOutline(const CJOBXdataPkgObj& from)
{
    if (const auto* const circle = dynamic_cast<const CJOBXdataPkgObjCircle*>(&from))
    {
        auto to = MakeNew<CODBdataPkgObjCircle>();
        to->m_ptCenter = circle->m_ptCenter;
        to->m_dRadius = circle->m_dRadius;
        return to;
    }
    if (const auto* const square = dynamic_cast<const CJOBXdataPkgObjSquare*>(&from))
    {
        auto to = MakeNew<CODBdataPkgObjSquare>();
        to->m_ptCenter = square->m_ptCenter;
        to->m_dHalfSide = square->m_dHalfSide;
        return to;
    }
    if (const auto* const rectangle = dynamic_cast<const CJOBXdataPkgObjRectangle*>(&from))
    {
        auto to = MakeNew<CODBdataPkgObjRectangle>();
        to->m_dWidth = rectangle->m_dWidth;
        to->m_dHeight = rectangle->m_dHeight;
        to->m_ptLowerLeft = rectangle->m_ptLowerLeft;
        return to;
    }
    if (const auto* const contour = dynamic_cast<const CJOBXdataPkgObjContour*>(&from))
    {
        auto to = MakeNew<CODBdataPkgObjContour>();
        ConvertAll(contour->m_arrElements, to->m_arrElements);
        return to;
    }
    return MakeNew<CODBdataPkgObj>();
}

std::unique_ptr<CODBdataPkgObj> Converted(const CJOBXdataPkgObj& from)
{
    std::unique_ptr<CODBdataPkgObj> to = NewOutline(from);
    to->m_nLineNumber = from.m_nLineNumber;
    // Word by word, because taking them as an array would change the source.
    from.m_arrParameters.ForEach(
        [&to](std::string_view word)
        {
            to->m_arrParameters.Add(CString(word));
            return true;
        });
    to->m_sKeyword = from.m_sKeyword;
    return to;
}

void Convert(const CJOBXdataPkgPin& from, CODBdataPkgPin& to)
{
    to.m_nFlag = from.m_nFlag;
    ConvertAllByClass(from.m_arrOutlines, to.m_arrOutlines);
    to.m_dHoleSize = from.m_dHoleSize;
    to.m_ptCenter = from.m_ptCenter;
    to.m_sType = from.m_sType;
    to.m_sElectricalType = from.m_sElectricalType;
    to.m_sMountType = from.m_sMountType;
    to.m_sName = from.m_sName;
}

void Convert(const CJOBXdataPkg& from, CODBdataPkg& to)
{
    to.m_nNumber = from.m_nNumber;
    to.m_nFlag = from.m_nFlag;
    ConvertAllByClass(from.m_arrOutlines, to.m_arrOutlines);
    ConvertAll(from.m_arrPins, to.m_arrPins);
    to.m_dPitch = from.m_dPitch;
    to.m_ptUpperRight = from.m_ptUpperRight;
    to.m_ptLowerLeft = from.m_ptLowerLeft;
    to.m_sName = from.m_sName;
    to.m_arrProperties = from.m_arrProperties;
    to.m_arrAttributes = from.m_arrAttributes;
}

void Convert(const CJOBXdata& from, CODBdata& to)
{
    to.m_sHeader = from.m_sHeader;
    to.m_arrLayerNames = from.m_arrLayerNames;
    ConvertAll(from.m_arrNets, to.m_arrNets);
    ConvertAll(from.m_arrPkgs, to.m_arrPkgs);
    to.m_arrProperties = from.m_arrProperties;
    to.m_sUnits = from.m_sUnits;
    to.m_arrAttributeNames = from.m_arrAttributeNames;
    to.m_arrAttributeTexts = from.m_arrAttributeTexts;
}

void Convert(const CJOBXnetPt& from, CODBnetPt& to)
{
    to.m_sSide = from.m_sSide;
    to.m_sStaggeredMark = from.m_sStaggeredMark;
    to.m_dStaggeredRadius = from.m_dStaggeredRadius;
    to.m_sExposure = from.m_sExposure;
    to.m_sEndPoint = from.m_sEndPoint;
    to.m_dHeight = from.m_dHeight;
    to.m_dWidth = from.m_dWidth;
    to.m_ptPosition = from.m_ptPosition;
    to.m_ptStaggeredPosition = from.m_ptStaggeredPosition;
    to.m_dRadius = from.m_dRadius;
    to.m_arrFlags = from.GetFlags();
}

void Convert(const CJOBXnet& from, CODBnet& to)
{
    ConvertAll(from.m_arrPts, to.m_arrPts);
    to.m_sName = from.m_sName;
    to.m_nNumber = from.m_nNumber;
}

void Convert(const CJOBXnetlist& from, CODBnetlist& to)
{
    ConvertAll(from.m_arrPts, to.m_arrPts);
    ConvertAll(from.m_arrNets, to.m_arrNets);
    to.m_arrNets.m_sUnits = from.m_arrNets.m_sUnits;
}

void Convert(const CJOBXstepRepeat& from, CODBstepRepeat& to)
{
    to.m_sName = from.m_sName;
    to.m_ptPosition = from.m_ptPosition;
    to.m_ptPitch = from.m_ptPitch;
    to.m_ptCount = from.m_ptCount;
    to.m_dAngle = from.m_dAngle;
    to.m_sMirror = from.m_sMirror;
    to.m_sFlip = from.m_sFlip;
}

void Convert(const CJOBXstephdr& from, CODBstephdr& to)
{
    to.m_ptDatum = from.m_ptDatum;
    to.m_ptOrigin = from.m_ptOrigin;
    to.m_sTopActive = from.m_sTopActive;
    to.m_sBottomActive = from.m_sBottomActive;
    to.m_sRightActive = from.m_sRightActive;
    to.m_sLeftActive = from.m_sLeftActive;
    to.m_sOnlineDrcName = from.m_sOnlineDrcName;
    to.m_sOnlineDrcMode = from.m_sOnlineDrcMode;
    to.m_sOnlineDrcStat = from.m_sOnlineDrcStat;
    to.m_sOnlineDrcTime = from.m_sOnlineDrcTime;
    to.m_sOnlineDrcBeepVol = from.m_sOnlineDrcBeepVol;
    to.m_sOnlineDrcBeepTone = from.m_sOnlineDrcBeepTone;
    to.m_sOnlineNetMode = from.m_sOnlineNetMode;
    to.m_sOnlineNetStat = from.m_sOnlineNetStat;
    to.m_sOnlineNetTime = from.m_sOnlineNetTime;
    to.m_sOnlineNetBeepVol = from.m_sOnlineNetBeepVol;
    to.m_sOnlineNetBeepTone = from.m_sOnlineNetBeepTone;
    to.m_sAffectingBom = from.m_sAffectingBom;
    to.m_sAffectingBomChanged = from.m_sAffectingBomChanged;
    ConvertAll(from.m_arrStepRepeats, to.m_arrStepRepeats);
}

void ConvertJob(const CJOBX& job, CODB& to)
{
    to.m_sSource = job.m_pMisc->m_sODBSource;
    ConvertAll(*job.m_pSpecialSymbols, to.m_arrSpecialSymbols);
    ConvertAll(job.m_pMatrix->m_arrLayers, to.m_matrix.m_arrLayers);
    ConvertAll(*job.m_pSysAttrs, to.m_arrSysAttrs);
}

void ConvertStep(const CJOBXstepObj& step, CODB& to)
{
    auto profile = MakeNew<CODBlayer>();
    Convert(*step.GetProfile(), *profile);
    to.m_pSingleLayer = std::move(profile);
    ConvertAll(step.m_arrLayers, to.m_arrLayers);
    Convert(step.m_arrComponents, *to.m_pComponents);
    Convert(*step.GetEda()->m_pData, *to.m_pData);
    Convert(*step.GetNetlist(), to.m_netlist);
    auto header = MakeNew<CODBstephdr>();
    Convert(*step.GetHeader(), *header);
    to.m_arrStephdrs.Own(std::move(header));
}
} // namespace

CODB* pMakeCompactModel(const CJOBX& job, const CJOBXstepObj* step)
{
    if (step == nullptr)
        return nullptr;
    return Guarded(
        [&]
        {
            auto model = std::make_unique<CODB>();
            ConvertJob(job, *model);
            ConvertStep(*step, *model);
            return model.release();
        });
}

CODB* pMakeCompactModel(const CJOBX& job, const CString& stepName)
{
    const CJOBXstepObjArray& steps = job.m_pSteps->m_arrSteps;
    for (__int64 i = 0; i < steps.GetSize(); ++i)
        if (const CJOBXstepObj* const step = steps.GetAt(i);
            step != nullptr && step->m_sName.CompareNoCase(stepName) == 0)
            return pMakeCompactModel(job, step);
    return nullptr;
}
