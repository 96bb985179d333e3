// Every record of the main model beside the one of the compact model that it becomes, told once: member by member.
// Tests fill the first with it, and compare both.
#pragma once

#include "JOBXCLSDLL.h"

// `Visit` sees pairs of members as operator()(CString&, CString&) and the like, pairs of lists as List(main, compact,
// walk), where walk is called with each pair of records, and lists of several classes as ListOfClasses.
template <class Visit>
class RecordPairs
{
public:
    explicit RecordPairs(Visit& visit) : v(visit) {}

    void Walk(CJOBXlayObjOX& a, CODBlayObjOX& b)
    {
        v.Access(a, &CJOBXlayObjOX::GetLineNumber, &CJOBXlayObjOX::SetLineNumber, b.m_nLineNumber);
        v.Access(a, &CJOBXlayObjOX::GetClockwise, &CJOBXlayObjOX::SetClockwise, b.m_sClockwise);
        v.Access(a, &CJOBXlayObjOX::GetPolygonType, &CJOBXlayObjOX::SetPolygonType, b.m_sPolygonType);
        v.Access(a, &CJOBXlayObjOX::GetCenterPoint, &CJOBXlayObjOX::SetCenterPoint, b.m_ptCenter);
        v.Access(a, &CJOBXlayObjOX::GetPoint, &CJOBXlayObjOX::SetPoint, b.m_ptPoint);
        v.Access(a, &CJOBXlayObjOX::GetKind, &CJOBXlayObjOX::SetKind, b.m_sKind);
    }
    void Walk(CJOBXlayObjSurfaceOB& a, CODBlayObjSurfaceOB& b) { List(*a.GetODBlayObjOXArray(), b.m_arrElements); }

    void Walk(CJOBXlayObj& a, CODBlayObj& b)
    {
        v.Access(a, &CJOBXlayObj::GetDcode, &CJOBXlayObj::SetDcode, b.m_nDcode);
        v.Access(a, &CJOBXlayObj::GetPolarity, &CJOBXlayObj::SetPolarity, b.m_sPolarity);
        v.Access(a, &CJOBXlayObj::GetSymbolNumber, &CJOBXlayObj::SetSymbolNumber, b.m_nSymbol);
        v.Access(a, &CJOBXlayObj::GetFeatureIndex, &CJOBXlayObj::SetFeatureIndex, b.m_nIndex);
        v.Access(a, &CJOBXlayObj::GetSurfaceIndex, &CJOBXlayObj::SetSurfaceIndex, b.m_nSurfaceIndex);
        v.Access(a, &CJOBXlayObj::GetUserValue, &CJOBXlayObj::SetUserValue, b.m_nUserValue);
        v.Properties(a, b.m_arrProperties);
        v.Texts(a, b.m_arrTexts);
        WalkGeometry(a, b);
        v.Access(a, &CJOBXlayObj::GetType, &CJOBXlayObj::SetType, b.m_sType);
    }
    void Walk(CJOBXlayObjLine& a, CODBlayObjLine& b)
    {
        v.Access(a, &CJOBXlayObjLine::GetEndPoint, &CJOBXlayObjLine::SetEndPoint, b.m_ptEnd);
        v.Access(a, &CJOBXlayObjLine::GetStartPoint, &CJOBXlayObjLine::SetStartPoint, b.m_ptStart);
        v.Access(a, &CJOBXlayObjLine::GetPadName, &CJOBXlayObjLine::SetPadName, b.m_sPadName);
    }
    void Walk(CJOBXlayObjPad& a, CODBlayObjPad& b)
    {
        v.Access(a, &CJOBXlayObjPad::GetPadName, &CJOBXlayObjPad::SetPadName, b.m_sPadName);
        v.Access(a, &CJOBXlayObjPad::GetOrientation, &CJOBXlayObjPad::SetOrientation, b.m_nOrientation);
        v.Access(a, &CJOBXlayObjPad::GetResizeFactor, &CJOBXlayObjPad::SetResizeFactor, b.m_dResizeFactor);
        v.Access(a, &CJOBXlayObjPad::GetResizeFlag, &CJOBXlayObjPad::SetResizeFlag, b.m_nResizeFlag);
        v.Access(a, &CJOBXlayObjPad::GetRotationAngle, &CJOBXlayObjPad::SetRotationAngle, b.m_dAngle);
        v.Access(a, &CJOBXlayObjPad::GetCenterPoint, &CJOBXlayObjPad::SetCenterPoint, b.m_ptCenter);
    }
    void Walk(CJOBXlayObjArc& a, CODBlayObjArc& b)
    {
        v.Access(a, &CJOBXlayObjArc::GetClockwise, &CJOBXlayObjArc::SetClockwise, b.m_sClockwise);
        v.Access(a, &CJOBXlayObjArc::GetCenterPoint, &CJOBXlayObjArc::SetCenterPoint, b.m_ptCenter);
        v.Access(a, &CJOBXlayObjArc::GetEndPoint, &CJOBXlayObjArc::SetEndPoint, b.m_ptEnd);
        v.Access(a, &CJOBXlayObjArc::GetStartPoint, &CJOBXlayObjArc::SetStartPoint, b.m_ptStart);
        v.Access(a, &CJOBXlayObjArc::GetPadName, &CJOBXlayObjArc::SetPadName, b.m_sPadName);
    }
    void Walk(CJOBXlayObjText& a, CODBlayObjText& b)
    {
        v.Access(a, &CJOBXlayObjText::GetVersion, &CJOBXlayObjText::SetVersion, b.m_nVersion);
        v.Access(a, &CJOBXlayObjText::GetText, &CJOBXlayObjText::SetText, b.m_sText);
        v.Access(a, &CJOBXlayObjText::GetWidthFactor, &CJOBXlayObjText::SetWidthFactor, b.m_dWidthFactor);
        v.Access(a, &CJOBXlayObjText::GetSize, &CJOBXlayObjText::SetSize, b.m_ptSize);
        v.Access(a, &CJOBXlayObjText::GetOrientation, &CJOBXlayObjText::SetOrientation, b.m_nOrientation);
        v.Access(a, &CJOBXlayObjText::GetFontName, &CJOBXlayObjText::SetFontName, b.m_sFontName);
        v.Access(a, &CJOBXlayObjText::GetPosition, &CJOBXlayObjText::SetPosition, b.m_ptPosition);
        v.Access(a, &CJOBXlayObjText::GetRotationAngle, &CJOBXlayObjText::SetRotationAngle, b.m_dAngle);
    }
    void Walk(CJOBXlayObjBarcode& a, CODBlayObjBarcode& b)
    {
        v(a.m_sText, b.m_sText);
        v(a.m_sAstrPosition, b.m_sAstrPosition);
        v(a.m_sAstr, b.m_sAstr);
        v(a.m_sBg, b.m_sBg);
        v(a.m_sCs, b.m_sCs);
        v(a.m_sEFlag, b.m_sEFlag);
        v(a.m_sFasc, b.m_sFasc);
        v(a.m_dHeight, b.m_dHeight);
        v(a.m_dWidth, b.m_dWidth);
        v(a.m_sFontName, b.m_sFontName);
        v(a.m_sBarcodeName, b.m_sBarcodeName);
        v(a.m_nOrientation, b.m_nOrientation);
        v(a.m_ptPosition, b.m_ptPosition);
    }
    void Walk(CJOBXlayObjSurface& a, CODBlayObjSurface& b) { List(*a.GetContours(), b.m_arrContours); }

    // Units texts and rescale factors are no pairs: the former are changed, the latter begin anew.
    void Walk(CJOBXlayer& a, CODBlayer& b)
    {
        v(a.m_sName, b.m_sName);
        v.template ListOfClasses<CJOBXlayObj, CJOBXlayObjLine, CJOBXlayObjPad, CJOBXlayObjArc, CJOBXlayObjText,
                                 CJOBXlayObjBarcode, CJOBXlayObjSurface>(
            *a.GetFeatures(), b.m_arrFeatures, [this](CJOBXlayObj& x, CODBlayObj& y) { Walk(x, y); });
        v(a.m_arrAttributeTexts, b.m_arrAttributeTexts);
        v(a.m_arrAttributeTextNumbers, b.m_arrAttributeTextNumbers);
        v(a.m_arrAttributeNames, b.m_arrAttributeNames);
        v(a.m_arrAttributeNameNumbers, b.m_arrAttributeNameNumbers);
        v(a.m_arrSymbolNames, b.m_arrSymbolNames);
        v(a.m_arrSymbolNumbers, b.m_arrSymbolNumbers);
        v(a.m_arrSymbolSecondFields, b.m_arrSymbolSecondFields);
        v(a.m_dCopperWeightOrDielectric, b.m_dCopperWeightOrDielectric);
        v(a.m_nFirstLineNo, b.m_nFirstLineNo);
        v(a.m_nLastLineNo, b.m_nLastLineNo);
        v(a.m_nFeatureLineNo, b.m_nFeatureLineNo);
    }
    void Walk(CJOBXSpecialSymbol& a, CODBSpecialSymbol& b)
    {
        v(a.m_arrTexts, b.m_arrTexts);
        v(a.m_sName, b.m_sName);
        Walk(*a.GetLayer(), b.m_layer);
        v(a.m_sPath, b.m_sPath);
    }
    void Walk(CJOBXmatrixLayer& a, CODBmatrixLayer& b)
    {
        v(a.m_sEndName, b.m_sEndName);
        v(a.m_sStartName, b.m_sStartName);
        v(a.m_sPolarity, b.m_sPolarity);
        v(a.m_sName, b.m_sName);
        v(a.m_sType, b.m_sType);
        v(a.m_sContext, b.m_sContext);
        v(a.m_sAddType, b.m_sAddType);
        v(a.m_sOldName, b.m_sOldName);
        v(a.m_sColor, b.m_sColor);
        v(a.m_nRow, b.m_nRow);
    }
    void Walk(CJOBXsysAttrData& a, CODBsysAttrData& b)
    {
        v(a.m_arrOptions, b.m_arrOptions);
        v(a.m_sName, b.m_sName);
    }
    void Walk(CJOBXcmpTop& a, CODBcmpToe& b)
    {
        v(a.m_sName, b.m_sName);
        v(a.m_nNet, b.m_nNet);
        v(a.m_nSubnet, b.m_nSubnet);
        v(a.m_nMirror, b.m_nMirror);
        v(a.m_dRotation, b.m_dRotation);
        v(a.m_ptLocation, b.m_ptLocation);
        v(a.m_nPin, b.m_nPin);
    }
    // The side of a component is no pair where it is open.
    void Walk(CJOBXcmp& a, CODBcmp& b)
    {
        v(a.m_nNumber, b.m_nNumber);
        List(a.m_arrTops, b.m_arrToes);
        v(a.m_sPartName, b.m_sPartName);
        v(a.m_sName, b.m_sName);
        v(a.m_nMirror, b.m_nMirror);
        v(a.m_dRotation, b.m_dRotation);
        v(a.m_ptLocation, b.m_ptLocation);
        v(a.m_nPkgRef, b.m_nPkgRef);
        v(a.m_arrProperties, b.m_arrProperties);
        v(a.m_arrAttributes, b.m_arrAttributes);
    }
    void Walk(CJOBXdataNetObj& a, CODBdataNetObj& b)
    {
        v(a.m_nFeatureIndex, b.m_nFeatureIndex);
        v(a.m_nLayerIndex, b.m_nLayerIndex);
        v(a.m_sKind, b.m_sKind);
        v(a.m_sText, b.m_sText);
        v(a.m_nLineNumber, b.m_nLineNumber);
    }
    void Walk(CJOBXSnt& a, CODBSnt& b)
    {
        v(a.m_nFlag, b.m_nFlag);
        v(a.m_nLineNumber, b.m_nLineNumber);
        List(a.m_arrNetObjs, b.m_arrNetObjs);
        v(a.m_dFillSize, b.m_dFillSize);
        v(a.m_sCutoutType, b.m_sCutoutType);
        v(a.m_sFillType, b.m_sFillType);
        v(a.m_nToeprintNumber, b.m_nToeprintNumber);
        v(a.m_nComponentNumber, b.m_nComponentNumber);
        v(a.m_sSide, b.m_sSide);
        v(a.m_sKind, b.m_sKind);
        v(a.m_ptPosition, b.m_ptPosition);
        v(a.m_sText, b.m_sText);
    }
    void Walk(CJOBXdataNet& a, CODBdataNet& b)
    {
        v(a.m_nNumber, b.m_nNumber);
        List(a.m_arrSnts, b.m_arrSnts);
        v(a.m_nFlag, b.m_nFlag);
        v(a.m_sName, b.m_sName);
        v(a.m_arrProperties, b.m_arrProperties);
    }
    void Walk(CJOBXdataPkgObj& a, CODBdataPkgObj& b)
    {
        v(a.m_nLineNumber, b.m_nLineNumber);
        v(a.m_arrParameters, b.m_arrParameters);
        v(a.m_sKeyword, b.m_sKeyword);
        WalkGeometry(a, b);
    }
    void Walk(CJOBXdataPkgObjCircle& a, CODBdataPkgObjCircle& b)
    {
        v(a.m_ptCenter, b.m_ptCenter);
        v(a.m_dRadius, b.m_dRadius);
    }
    void Walk(CJOBXdataPkgObjSquare& a, CODBdataPkgObjSquare& b)
    {
        v(a.m_ptCenter, b.m_ptCenter);
        v(a.m_dHalfSide, b.m_dHalfSide);
    }
    void Walk(CJOBXdataPkgObjRectangle& a, CODBdataPkgObjRectangle& b)
    {
        v(a.m_dWidth, b.m_dWidth);
        v(a.m_dHeight, b.m_dHeight);
        v(a.m_ptLowerLeft, b.m_ptLowerLeft);
    }
    void Walk(CJOBXdataPkgObjContour& a, CODBdataPkgObjContour& b) { List(a.m_arrElements, b.m_arrElements); }
    void Walk(CJOBXdataPkgPin& a, CODBdataPkgPin& b)
    {
        v(a.m_nFlag, b.m_nFlag);
        Outlines(a.m_arrOutlines, b.m_arrOutlines);
        v(a.m_dHoleSize, b.m_dHoleSize);
        v(a.m_ptCenter, b.m_ptCenter);
        v(a.m_sType, b.m_sType);
        v(a.m_sElectricalType, b.m_sElectricalType);
        v(a.m_sMountType, b.m_sMountType);
        v(a.m_sName, b.m_sName);
    }
    void Walk(CJOBXdataPkg& a, CODBdataPkg& b)
    {
        v(a.m_nNumber, b.m_nNumber);
        v(a.m_nFlag, b.m_nFlag);
        Outlines(a.m_arrOutlines, b.m_arrOutlines);
        List(a.m_arrPins, b.m_arrPins);
        v(a.m_dPitch, b.m_dPitch);
        v(a.m_ptUpperRight, b.m_ptUpperRight);
        v(a.m_ptLowerLeft, b.m_ptLowerLeft);
        v(a.m_sName, b.m_sName);
        v(a.m_arrProperties, b.m_arrProperties);
        v(a.m_arrAttributes, b.m_arrAttributes);
    }
    void Walk(CJOBXdata& a, CODBdata& b)
    {
        v(a.m_sHeader, b.m_sHeader);
        v(a.m_arrLayerNames, b.m_arrLayerNames);
        List(a.m_arrNets, b.m_arrNets);
        List(a.m_arrPkgs, b.m_arrPkgs);
        v(a.m_arrProperties, b.m_arrProperties);
        v(a.m_sUnits, b.m_sUnits);
        v(a.m_arrAttributeNames, b.m_arrAttributeNames);
        v(a.m_arrAttributeTexts, b.m_arrAttributeTexts);
    }
    void Walk(CJOBXnetPt& a, CODBnetPt& b)
    {
        v(a.m_sSide, b.m_sSide);
        v(a.m_sStaggeredMark, b.m_sStaggeredMark);
        v(a.m_dStaggeredRadius, b.m_dStaggeredRadius);
        v(a.m_sExposure, b.m_sExposure);
        v(a.m_sEndPoint, b.m_sEndPoint);
        v(a.m_dHeight, b.m_dHeight);
        v(a.m_dWidth, b.m_dWidth);
        v(a.m_ptPosition, b.m_ptPosition);
        v(a.m_ptStaggeredPosition, b.m_ptStaggeredPosition);
        v(a.m_dRadius, b.m_dRadius);
        v.Flags(a, b.m_arrFlags);
    }
    void Walk(CJOBXnet& a, CODBnet& b)
    {
        List(a.m_arrPts, b.m_arrPts);
        v(a.m_sName, b.m_sName);
        v(a.m_nNumber, b.m_nNumber);
    }
    void Walk(CJOBXnetlist& a, CODBnetlist& b)
    {
        List(a.m_arrPts, b.m_arrPts);
        List(a.m_arrNets, b.m_arrNets);
        v(a.m_arrNets.m_sUnits, b.m_arrNets.m_sUnits);
    }
    void Walk(CJOBXstepRepeat& a, CODBstepRepeat& b)
    {
        v(a.m_sName, b.m_sName);
        v(a.m_ptPosition, b.m_ptPosition);
        v(a.m_ptPitch, b.m_ptPitch);
        v(a.m_ptCount, b.m_ptCount);
        v(a.m_dAngle, b.m_dAngle);
        v(a.m_sMirror, b.m_sMirror);
        v(a.m_sFlip, b.m_sFlip);
    }
    void Walk(CJOBXstephdr& a, CODBstephdr& b)
    {
        v(a.m_ptDatum, b.m_ptDatum);
        v(a.m_ptOrigin, b.m_ptOrigin);
        v(a.m_sTopActive, b.m_sTopActive);
        v(a.m_sBottomActive, b.m_sBottomActive);
        v(a.m_sRightActive, b.m_sRightActive);
        v(a.m_sLeftActive, b.m_sLeftActive);
        v(a.m_sOnlineDrcName, b.m_sOnlineDrcName);
        v(a.m_sOnlineDrcMode, b.m_sOnlineDrcMode);
        v(a.m_sOnlineDrcStat, b.m_sOnlineDrcStat);
        v(a.m_sOnlineDrcTime, b.m_sOnlineDrcTime);
        v(a.m_sOnlineDrcBeepVol, b.m_sOnlineDrcBeepVol);
        v(a.m_sOnlineDrcBeepTone, b.m_sOnlineDrcBeepTone);
        v(a.m_sOnlineNetMode, b.m_sOnlineNetMode);
        v(a.m_sOnlineNetStat, b.m_sOnlineNetStat);
        v(a.m_sOnlineNetTime, b.m_sOnlineNetTime);
        v(a.m_sOnlineNetBeepVol, b.m_sOnlineNetBeepVol);
        v(a.m_sOnlineNetBeepTone, b.m_sOnlineNetBeepTone);
        v(a.m_sAffectingBom, b.m_sAffectingBom);
        v(a.m_sAffectingBomChanged, b.m_sAffectingBomChanged);
        List(a.m_arrStepRepeats, b.m_arrStepRepeats);
    }
    // What a job has beside its steps.
    void Walk(CJOBX& a, CODB& b)
    {
        v(a.m_pMisc->m_sODBSource, b.m_sSource);
        List(*a.m_pSpecialSymbols, b.m_arrSpecialSymbols);
        List(a.m_pMatrix->m_arrLayers, b.m_matrix.m_arrLayers);
        List(*a.m_pSysAttrs, b.m_arrSysAttrs);
    }
    // What a step has beside its components: their files become one part.
    void Walk(CJOBXstepObj& a, CODB& b, CODBlayer& profile, CODBstephdr& header)
    {
        Walk(*a.GetProfile(), profile);
        List(a.m_arrLayers, b.m_arrLayers);
        Walk(*a.GetEda()->m_pData, *b.m_pData);
        Walk(*a.GetNetlist(), b.m_netlist);
        Walk(*a.GetHeader(), header);
    }
    template <class A, class B>
    void List(CExPtrArray<A*, A*>& a, COwningPtrArray<B>& b)
    {
        v.List(a, b, [this](A& x, B& y) { Walk(x, y); });
    }

private:
    void Outlines(CJOBXdataPkgObjArray& a, CODBdataPkgObjArray& b)
    {
        v.template ListOfClasses<CJOBXdataPkgObj, CJOBXdataPkgObjCircle, CJOBXdataPkgObjSquare,
                                 CJOBXdataPkgObjRectangle, CJOBXdataPkgObjContour>(
            a, b, [this](CJOBXdataPkgObj& x, CODBdataPkgObj& y) { Walk(x, y); });
    }
    void WalkGeometry(CJOBXlayObj& a, CODBlayObj& b)
    {
        WalkAs<CJOBXlayObjLine, CODBlayObjLine>(a, b);
        WalkAs<CJOBXlayObjPad, CODBlayObjPad>(a, b);
        WalkAs<CJOBXlayObjArc, CODBlayObjArc>(a, b);
        WalkAs<CJOBXlayObjText, CODBlayObjText>(a, b);
        WalkAs<CJOBXlayObjBarcode, CODBlayObjBarcode>(a, b);
        WalkAs<CJOBXlayObjSurface, CODBlayObjSurface>(a, b);
    }
    void WalkGeometry(CJOBXdataPkgObj& a, CODBdataPkgObj& b)
    {
        WalkAs<CJOBXdataPkgObjCircle, CODBdataPkgObjCircle>(a, b);
        WalkAs<CJOBXdataPkgObjSquare, CODBdataPkgObjSquare>(a, b);
        WalkAs<CJOBXdataPkgObjRectangle, CODBdataPkgObjRectangle>(a, b);
        WalkAs<CJOBXdataPkgObjContour, CODBdataPkgObjContour>(a, b);
    }
    template <class A, class B, class BaseA, class BaseB>
    void WalkAs(BaseA& a, BaseB& b)
    {
        A* const main = dynamic_cast<A*>(&a);
        if (main == nullptr)
            return;
        if (B* const compact = v.template CompactAs<B>(b))
            Walk(*main, *compact);
    }

    Visit& v;
};
