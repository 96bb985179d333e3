#include "change/PlacedFeatures.h"

#include "change/CopyFields.h"
#include "layer/CJOBXlayObjFields.h"

#include <cmath>
#include <string_view>

namespace
{
// The codes of orientations.
constexpr int kQuarters = 4; // from here on mirrored
constexpr int kTurned = 8;
constexpr int kTurnedAndMirrored = 9;

// "Y" and "N", exchanged where the picture is mirrored.
CString Direction(const CString& clockwise, bool isMirrored)
{
    if (!isMirrored)
        return clockwise;
    if (clockwise.CompareNoCase("Y") == 0)
        return "N";
    return clockwise.CompareNoCase("N") == 0 ? CString("Y") : clockwise;
}

template <class Oriented>
void TurnFeature(Oriented& feature, const CPose& pose)
{
    int code = feature.GetOrientation();
    double angle = feature.GetRotationAngle();
    TurnOrientation(pose, code, angle);
    feature.SetOrientation(code);
    feature.SetRotationAngle(angle);
}

void Place(CJOBXlayObjLine& line, const CPlacedFile& file)
{
    line.SetStartPoint(file.Point(line.GetStartPoint()));
    line.SetEndPoint(file.Point(line.GetEndPoint()));
}
void Place(CJOBXlayObjPad& pad, const CPlacedFile& file)
{
    pad.SetCenterPoint(file.Point(pad.GetCenterPoint()));
    pad.SetResizeFactor(file.Length(pad.GetResizeFactor()));
    TurnFeature(pad, file.Pose());
}
void Place(CJOBXlayObjArc& arc, const CPlacedFile& file)
{
    arc.SetStartPoint(file.Point(arc.GetStartPoint()));
    arc.SetEndPoint(file.Point(arc.GetEndPoint()));
    arc.SetCenterPoint(file.Point(arc.GetCenterPoint()));
    arc.SetClockwise(Direction(arc.GetClockwise(), file.Pose().isMirrored));
}
void Place(CJOBXlayObjText& text, const CPlacedFile& file)
{
    text.SetPosition(file.Point(text.GetPosition()));
    text.SetSize(file.Size(text.GetSize()));
    TurnFeature(text, file.Pose());
}
void Place(CJOBXlayObjBarcode& barcode, const CPlacedFile& file)
{
    barcode.m_ptPosition = file.Point(barcode.m_ptPosition);
    barcode.m_dWidth = file.Length(barcode.m_dWidth);
    barcode.m_dHeight = file.Length(barcode.m_dHeight);
    double angle = barcode.GetRotationAngle();
    TurnOrientation(file.Pose(), barcode.m_nOrientation, angle);
    barcode.SetRotationAngle(angle);
}

bool IsKind(const CJOBXlayObjOX& element, std::string_view kind)
{
    return element.GetKind().View() == kind;
}

// Lets a contour run the other way round: each element ends where it began. Arcs change their direction twice, by the
// mirror and by this. False if it has not the form of a contour; then nothing changes.
bool Reverse(CJOBXlayObjOXArray& elements)
{
    const __int64 last = elements.GetSize() - 1;
    if (last < 2 || elements.GetAt(0) == nullptr || elements.GetAt(last) == nullptr ||
        !IsKind(*elements.GetAt(0), "OB") || !IsKind(*elements.GetAt(last), "OE"))
        return false;
    for (__int64 i = 1; i < last; ++i)
        if (elements.GetAt(i) == nullptr || (!IsKind(*elements.GetAt(i), "OS") && !IsKind(*elements.GetAt(i), "OC")))
            return false;
    const CPointD begin = elements.GetAt(0)->GetPoint();
    elements.GetAt(0)->SetPoint(elements.GetAt(last - 1)->GetPoint());
    for (__int64 i = last - 1; i > 0; --i)
        elements.GetAt(i)->SetPoint(i > 1 ? elements.GetAt(i - 1)->GetPoint() : begin);
    for (__int64 i = 1, k = last - 1; i < k; ++i, --k)
    {
        CJOBXlayObjOX* const element = elements.GetAt(i);
        elements.SetAt(i, elements.GetAt(k));
        elements.SetAt(k, element);
    }
    return true;
}

void Place(CJOBXlayObjSurface& surface, const CPlacedFile& file)
{
    for (CJOBXlayObjSurfaceOB& contour : surface.GetContours()->Records())
    {
        CJOBXlayObjOXArray& elements = *contour.GetODBlayObjOXArray();
        for (CJOBXlayObjOX& element : elements.Records())
        {
            if (!IsKind(element, "OE"))
                element.SetPoint(file.Point(element.GetPoint()));
            if (IsKind(element, "OC"))
                element.SetCenterPoint(file.Point(element.GetCenterPoint()));
        }
        if (!file.Pose().isMirrored || Reverse(elements))
            continue;
        for (CJOBXlayObjOX& element : elements.Records())
            element.SetClockwise(Direction(element.GetClockwise(), true));
    }
}

// A placed copy of a feature of that class; null for one of another.
template <class Class>
std::unique_ptr<CJOBXlayObj> CopyAs(const CJOBXlayObj& feature, const CPlacedFile& file)
{
    if (dynamic_cast<const Class*>(&feature) == nullptr)
        return nullptr;
    auto copy = std::make_unique<Class>();
    jobx::CopyFields<CJOBXlayObj>(feature, *copy);
    Place(*copy, file);
    return copy;
}

template <class... Classes>
std::unique_ptr<CJOBXlayObj> CopyAsOneOf(const CJOBXlayObj& feature, const CPlacedFile& file)
{
    std::unique_ptr<CJOBXlayObj> copy;
    static_cast<void>(((copy = CopyAs<Classes>(feature, file)) || ...));
    return copy;
}
} // namespace

void TurnOrientation(const CPose& pose, int& code, double& angle)
{
    if (code < 0 || code > kTurnedAndMirrored || (pose.angle == 0.0 && !pose.isMirrored))
        return;
    constexpr double kQuarter = 90.0;
    const CPose own{code < kTurned ? (code % kQuarters) * kQuarter : angle,
                    code == kTurnedAndMirrored || (code >= kQuarters && code < kTurned)};
    const CPose turned = own.In(pose);
    const bool isRight = std::fmod(turned.angle, kQuarter) == 0.0;
    angle = isRight ? 0.0 : turned.angle;
    if (isRight)
        code = static_cast<int>(turned.angle / kQuarter) + (turned.isMirrored ? kQuarters : 0);
    else
        code = turned.isMirrored ? kTurnedAndMirrored : kTurned;
}

std::unique_ptr<CJOBXlayObj> PlacedCopy(const CJOBXlayObj& feature, const CPlacedFile& file)
{
    return CopyAsOneOf<CJOBXlayObjLine, CJOBXlayObjPad, CJOBXlayObjSurface, CJOBXlayObjArc, CJOBXlayObjText,
                       CJOBXlayObjBarcode>(feature, file);
}
