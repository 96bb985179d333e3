#include "compact/CompactMembers.h"

void Visit(MemberVisitor& v, CODBSnt& x)
{
    v.Plain(x.m_nFlag);
    v.Plain(x.m_nLineNumber);
    Visit(v, x.m_arrNetObjs);
    v.Plain(x.m_dFillSize);
    v.Plain(x.m_sCutoutType);
    v.Plain(x.m_sFillType);
    v.Plain(x.m_nToeprintNumber);
    v.Plain(x.m_nComponentNumber);
    v.Plain(x.m_sSide);
    v.Plain(x.m_sKind);
    v.Plain(x.m_ptPosition);
    v.Plain(x.m_sText);
}

void Visit(MemberVisitor& v, CODBdataNet& x)
{
    v.Plain(x.m_nNumber);
    Visit(v, x.m_arrSnts);
    v.Plain(x.m_nFlag);
    v.Plain(x.m_sName);
    v.Plain(x.m_arrProperties);
}

void FillWithAllClasses(MemberVisitor& v, CExPtrArray<CODBlayObj*, CODBlayObj*>& list)
{
    if (v.Fills() && list.IsEmpty())
    {
        list.Add(new CODBlayObj);
        list.Add(new CODBlayObjLine);
        list.Add(new CODBlayObjPad);
        list.Add(new CODBlayObjArc);
        list.Add(new CODBlayObjText);
        list.Add(new CODBlayObjBarcode);
        list.Add(new CODBlayObjSurface);
    }
    v.Integer(list.GetSize());
}

void Visit(MemberVisitor& v, CODBlayObj& x)
{
    v.Plain(x.m_arrProperties);
    v.Plain(x.m_nDcode);
    v.Plain(x.m_sPolarity);
    v.Plain(x.m_nSymbol);
    v.Plain(x.m_nIndex);
    v.Plain(x.m_nSurfaceIndex);
    v.Plain(x.m_arrTexts);
    v.Plain(x.m_sType);
    v.Plain(x.m_nUserValue);
    if (auto* const line = dynamic_cast<CODBlayObjLine*>(&x))
    {
        v.Length(line->m_ptEnd);
        v.Length(line->m_ptStart);
        v.Plain(line->m_sPadName);
    }
    if (auto* const pad = dynamic_cast<CODBlayObjPad*>(&x))
    {
        v.Plain(pad->m_sPadName);
        v.Plain(pad->m_nOrientation);
        v.Plain(pad->m_dResizeFactor);
        v.Plain(pad->m_nResizeFlag);
        v.Plain(pad->m_dAngle);
        v.Length(pad->m_ptCenter);
    }
    if (auto* const arc = dynamic_cast<CODBlayObjArc*>(&x))
    {
        v.Plain(arc->m_sClockwise);
        v.Length(arc->m_ptCenter);
        v.Length(arc->m_ptEnd);
        v.Length(arc->m_ptStart);
        v.Plain(arc->m_sPadName);
    }
    if (auto* const text = dynamic_cast<CODBlayObjText*>(&x))
    {
        v.Plain(text->m_nVersion);
        v.Plain(text->m_sText);
        v.Length(text->m_dWidthFactor);
        v.Length(text->m_ptSize);
        v.Plain(text->m_nOrientation);
        v.Plain(text->m_sFontName);
        v.Length(text->m_ptPosition);
        v.Plain(text->m_dAngle);
    }
    if (auto* const barcode = dynamic_cast<CODBlayObjBarcode*>(&x))
    {
        v.Plain(barcode->m_sText);
        v.Plain(barcode->m_sAstrPosition);
        v.Plain(barcode->m_sAstr);
        v.Plain(barcode->m_sBg);
        v.Plain(barcode->m_sCs);
        v.Plain(barcode->m_sEFlag);
        v.Plain(barcode->m_sFasc);
        v.Length(barcode->m_dHeight);
        v.Length(barcode->m_dWidth);
        v.Plain(barcode->m_sFontName);
        v.Plain(barcode->m_sBarcodeName);
        v.Plain(barcode->m_nOrientation);
        v.Length(barcode->m_ptPosition);
    }
    if (auto* const surface = dynamic_cast<CODBlayObjSurface*>(&x))
        Visit(v, surface->m_arrContours);
}

void Visit(MemberVisitor& v, CODBlayObjSurfaceOB& x)
{
    Visit(v, x.m_arrElements);
}

void Visit(MemberVisitor& v, CODBlayer& x)
{
    v.Plain(x.m_sName);
    v.Plain(x.m_dRescaleFactor);
    v.Plain(x.m_sUnits);
    Visit(v, x.m_arrFeatures);
    v.Plain(x.m_arrAttributeTexts);
    v.Plain(x.m_arrAttributeTextNumbers);
    v.Plain(x.m_arrAttributeNames);
    v.Plain(x.m_arrAttributeNameNumbers);
    v.Plain(x.m_arrSymbolNames);
    v.Plain(x.m_arrSymbolNumbers);
    v.Plain(x.m_arrSymbolSecondFields);
    v.Plain(x.m_dCopperWeightOrDielectric);
    v.Plain(x.m_nFirstLineNo);
    v.Plain(x.m_nLastLineNo);
    v.Plain(x.m_nFeatureLineNo);
}

void Visit(MemberVisitor& v, CODBSpecialSymbol& x)
{
    v.Plain(x.m_arrTexts);
    v.Plain(x.m_sName);
    v.Fixed([&] { Visit(v, x.m_layer); });
    v.Plain(x.m_sPath);
    v.Plain(x.m_sUnits);
    v.Plain(x.m_dRescaleFactor);
}

void Visit(MemberVisitor& v, CODBcmp& x)
{
    v.Plain(x.m_nNumber);
    v.Plain(x.m_nSide);
    Visit(v, x.m_arrToes);
    v.Plain(x.m_sPartName);
    v.Plain(x.m_sName);
    v.Plain(x.m_nMirror);
    v.Plain(x.m_dRotation);
    v.Length(x.m_ptLocation);
    v.Plain(x.m_nPkgRef);
    v.Plain(x.m_arrProperties);
    v.Plain(x.m_arrAttributes);
}

void Visit(MemberVisitor& v, CODBcomponents& x)
{
    Visit(v, x.m_arrCmps);
    v.Plain(x.m_arrAttributeNames);
    v.Plain(x.m_arrAttributeNameNumbers);
    v.Plain(x.m_arrAttributeTexts);
    v.Plain(x.m_arrAttributeTextNumbers);
    v.Plain(x.m_sUnits);
    v.Plain(x.m_dRescaleFactor);
    v.Plain(x.m_sLayerName);
    v.Plain(x.m_sRelativePath);
}

void FillWithAllClasses(MemberVisitor& v, CExPtrArray<CODBdataPkgObj*, CODBdataPkgObj*>& list)
{
    if (v.Fills() && list.IsEmpty())
    {
        list.Add(new CODBdataPkgObj);
        list.Add(new CODBdataPkgObjCircle);
        list.Add(new CODBdataPkgObjSquare);
        list.Add(new CODBdataPkgObjRectangle);
        list.Add(new CODBdataPkgObjContour);
    }
    v.Integer(list.GetSize());
}

void Visit(MemberVisitor& v, CODBdataPkgObj& x)
{
    v.Plain(x.m_nLineNumber);
    v.Plain(x.m_arrParameters);
    v.Plain(x.m_sKeyword);
    if (auto* const circle = dynamic_cast<CODBdataPkgObjCircle*>(&x))
    {
        v.Length(circle->m_ptCenter);
        v.Length(circle->m_dRadius);
    }
    if (auto* const square = dynamic_cast<CODBdataPkgObjSquare*>(&x))
    {
        v.Length(square->m_ptCenter);
        v.Length(square->m_dHalfSide);
    }
    if (auto* const rectangle = dynamic_cast<CODBdataPkgObjRectangle*>(&x))
    {
        v.Length(rectangle->m_dWidth);
        v.Length(rectangle->m_dHeight);
        v.Length(rectangle->m_ptLowerLeft);
    }
    if (auto* const contour = dynamic_cast<CODBdataPkgObjContour*>(&x))
        Visit(v, contour->m_arrElements);
}

void Visit(MemberVisitor& v, CODBdataPkgPin& x)
{
    v.Plain(x.m_nFlag);
    Visit(v, x.m_arrOutlines);
    v.Plain(x.m_dHoleSize);
    v.Length(x.m_ptCenter);
    v.Plain(x.m_sType);
    v.Plain(x.m_sElectricalType);
    v.Plain(x.m_sMountType);
    v.Plain(x.m_sName);
}

void Visit(MemberVisitor& v, CODBdataPkg& x)
{
    v.Plain(x.m_nNumber);
    v.Plain(x.m_nFlag);
    Visit(v, x.m_arrOutlines);
    Visit(v, x.m_arrPins);
    v.Length(x.m_dPitch);
    v.Length(x.m_ptUpperRight);
    v.Length(x.m_ptLowerLeft);
    v.Plain(x.m_sName);
    v.Plain(x.m_arrProperties);
    v.Plain(x.m_arrAttributes);
}

void Visit(MemberVisitor& v, CODBdata& x)
{
    v.Plain(x.m_sHeader);
    v.Plain(x.m_arrLayerNames);
    Visit(v, x.m_arrNets);
    Visit(v, x.m_arrPkgs);
    v.Plain(x.m_arrProperties);
    v.Plain(x.m_sUnits);
    v.Plain(x.m_dRescaleFactor);
    v.Plain(x.m_arrAttributeNames);
    v.Plain(x.m_arrAttributeTexts);
}

void Visit(MemberVisitor& v, CODBnet& x)
{
    Visit(v, x.m_arrPts);
    v.Plain(x.m_sName);
    v.Plain(x.m_nNumber);
}

void Visit(MemberVisitor& v, CODBnetlist& x)
{
    Visit(v, x.m_arrPts);
    Visit(v, x.m_arrNets);
}

void Visit(MemberVisitor& v, CODBmatrix& x)
{
    Visit(v, x.m_arrLayers);
}

void Visit(MemberVisitor& v, CODBstephdr& x)
{
    v.Length(x.m_ptDatum);
    v.Length(x.m_ptOrigin);
    v.Plain(x.m_sTopActive);
    v.Plain(x.m_sBottomActive);
    v.Plain(x.m_sRightActive);
    v.Plain(x.m_sLeftActive);
    v.Plain(x.m_sOnlineDrcName);
    v.Plain(x.m_sOnlineDrcMode);
    v.Plain(x.m_sOnlineDrcStat);
    v.Plain(x.m_sOnlineDrcTime);
    v.Plain(x.m_sOnlineDrcBeepVol);
    v.Plain(x.m_sOnlineDrcBeepTone);
    v.Plain(x.m_sOnlineNetMode);
    v.Plain(x.m_sOnlineNetStat);
    v.Plain(x.m_sOnlineNetTime);
    v.Plain(x.m_sOnlineNetBeepVol);
    v.Plain(x.m_sOnlineNetBeepTone);
    v.Plain(x.m_sAffectingBom);
    v.Plain(x.m_sAffectingBomChanged);
    Visit(v, x.m_arrStepRepeats);
}

void Visit(MemberVisitor& v, CODB& x)
{
    v.Plain(x.m_sSource);
    Visit(v, x.m_arrSpecialSymbols);
    Visit(v, x.m_arrLayers);
    if (v.Fills() && x.m_pSingleLayer == nullptr)
        x.m_pSingleLayer.reset(new CODBlayer);
    v.Integer(x.m_pSingleLayer == nullptr ? 0 : 1);
    if (x.m_pSingleLayer != nullptr)
        Visit(v, *x.m_pSingleLayer);
    v.Integer(x.m_pComponents == nullptr ? 0 : 1);
    if (x.m_pComponents != nullptr)
        Visit(v, *x.m_pComponents);
    v.Integer(x.m_pData == nullptr ? 0 : 1);
    if (x.m_pData != nullptr)
        Visit(v, *x.m_pData);
    v.Fixed([&] { Visit(v, x.m_netlist); });
    Visit(v, x.m_matrix);
    v.Fixed([&] { Visit(v, x.m_arrStephdrs); });
    Visit(v, x.m_arrSysAttrs);
}
