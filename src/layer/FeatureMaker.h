// How the features reader makes records: side by side, every field at once.
#pragma once

#include "foundation/CJOBXProperty.h"
#include "foundation/CRecordPool.h"
#include "layer/CJOBXlayObj.h"
#include "layer/FeatureLines.h"

#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

// The property lists shared by the features of a file. Features with equal attribute texts borrow one list until one of
// them changes its own. The lists live as long as any chunk with features that borrow them.
class CFeatureProperties : public CRecordKeep
{
public:
    // Takes ownership of the list.
    const CJOBXPropertyArray* Keep(std::unique_ptr<CJOBXPropertyArray> list)
    {
        m_lists.push_back(std::move(list));
        return m_lists.back().get();
    }

private:
    std::vector<std::unique_ptr<CJOBXPropertyArray>> m_lists;
};

// Makes the records of one file.
// Threads: the maker is used on the thread that made it.
class CFeatureMaker
{
public:
    // The numbers that contour elements store for common texts.
    static constexpr unsigned char kBegin = 1;
    static constexpr unsigned char kSegment = 2;
    static constexpr unsigned char kArc = 3;
    static constexpr unsigned char kEnd = 4;
    static constexpr unsigned char kClockwise = 1;
    static constexpr unsigned char kCounterClockwise = 2;

    // Takes over a list that features are going to borrow.
    const CJOBXPropertyArray* Keep(std::unique_ptr<CJOBXPropertyArray> list)
    {
        if (m_properties == nullptr)
            m_properties.reset(new CFeatureProperties);
        return m_properties->Keep(std::move(list));
    }

    // Make a record from its fields. `properties` is null or a list kept by CFeatureProperties.
    std::unique_ptr<CJOBXlayObj> Make(const LineFields& fields, int index, const CJOBXPropertyArray* properties)
    {
        auto line = New<CJOBXlayObjLine>();
        Fill(*line, features_format::kLine, fields, index, properties);
        line->SetStartPoint(PointOf(fields.start));
        line->SetEndPoint(PointOf(fields.end));
        return line;
    }
    std::unique_ptr<CJOBXlayObj> Make(const ArcFields& fields, int index, const CJOBXPropertyArray* properties)
    {
        auto arc = New<CJOBXlayObjArc>();
        Fill(*arc, features_format::kArc, fields, index, properties);
        arc->SetStartPoint(PointOf(fields.start));
        arc->SetEndPoint(PointOf(fields.end));
        arc->SetCenterPoint(PointOf(fields.center));
        arc->SetClockwise(CString(fields.clockwise));
        return arc;
    }
    std::unique_ptr<CJOBXlayObj> Make(const PadFields& fields, int index, const CJOBXPropertyArray* properties)
    {
        auto pad = New<CJOBXlayObjPad>();
        Fill(*pad, features_format::kPad, fields, index, properties);
        pad->SetCenterPoint(PointOf(fields.center));
        pad->SetResizeFlag(fields.resizeFlag);
        pad->SetResizeFactor(fields.resizeFactor);
        pad->SetOrientation(fields.orientation);
        pad->SetRotationAngle(fields.angle);
        return pad;
    }
    std::unique_ptr<CJOBXlayObj> Make(const TextFields& fields, int index, const CJOBXPropertyArray* properties)
    {
        auto text = New<CJOBXlayObjText>();
        Fill(*text, features_format::kText, fields, index, properties);
        text->SetPosition(PointOf(fields.position));
        text->SetFontName(CString(fields.font));
        text->SetOrientation(fields.orientation);
        text->SetRotationAngle(fields.angle);
        text->SetSize(PointOf(fields.size));
        text->SetWidthFactor(fields.widthFactor);
        text->SetText(CString(fields.text));
        text->SetVersion(fields.version);
        return text;
    }
    std::unique_ptr<CJOBXlayObj> Make(const BarcodeFields& fields, int index, const CJOBXPropertyArray* properties)
    {
        auto barcode = New<CJOBXlayObjBarcode>();
        Fill(*barcode, features_format::kBarcode, fields, index, properties);
        barcode->m_ptPosition = PointOf(fields.position);
        barcode->m_sBarcodeName = fields.name;
        barcode->m_sFontName = fields.font;
        barcode->m_nOrientation = fields.orientation;
        barcode->SetRotationAngle(fields.angle);
        barcode->m_sEFlag = fields.eFlag;
        barcode->m_dWidth = fields.width;
        barcode->m_dHeight = fields.height;
        barcode->m_sFasc = fields.fasc;
        barcode->m_sCs = fields.cs;
        barcode->m_sBg = fields.bg;
        barcode->m_sAstr = fields.astr;
        barcode->m_sAstrPosition = fields.astrPosition;
        barcode->m_sText = fields.text;
        return barcode;
    }
    std::unique_ptr<CJOBXlayObjSurface> Make(const SurfaceFields& fields, int index,
                                             const CJOBXPropertyArray* properties)
    {
        auto surface = New<CJOBXlayObjSurface>();
        Fill(*surface, features_format::kSurface, fields, index, properties);
        return surface;
    }

    // Make a contour element from that line of the file.
    std::unique_ptr<CJOBXlayObjOX> Make(const ContourFields& fields, int lineNumber)
    {
        auto element = Element(lineNumber, kBegin, fields.point);
        element->SetPolygonType(CString(fields.polygonType));
        return element;
    }
    std::unique_ptr<CJOBXlayObjOX> Make(const SegmentFields& fields, int lineNumber)
    {
        return Element(lineNumber, kSegment, fields.point);
    }
    std::unique_ptr<CJOBXlayObjOX> Make(const CurveFields& fields, int lineNumber)
    {
        const unsigned char clockwise = NumberOfDirection(fields.clockwise);
        auto element = Element(lineNumber, kArc, fields.point, fields.center, clockwise);
        if (clockwise == 0)
            element->SetClockwise(CString(fields.clockwise));
        return element;
    }
    std::unique_ptr<CJOBXlayObjOX> MakeEnd(int lineNumber) { return Element(lineNumber, kEnd, {}); }

private:
    struct Releaser
    {
        void operator()(CFeatureProperties* properties) const noexcept { properties->Release(); }
    };

    // Classes with short texts, so that nearly all their records own no memory: they have separate chunks.
    template <class T>
    static constexpr bool kIsPlain = std::is_same_v<T, CJOBXlayObjLine> || std::is_same_v<T, CJOBXlayObjPad> ||
                                     std::is_same_v<T, CJOBXlayObjArc> || std::is_same_v<T, CJOBXlayObjOX>;

    // What only derived classes may do.
    struct Feature : CJOBXlayObj
    {
        using CJOBXlayObj::IsCharacter;

        static void Begin(CJOBXlayObj& feature, char type, char polarity, const CJOBXPropertyArray* properties,
                          bool isAmongPlain) noexcept
        {
            CJOBXlayObj::Begin(feature, type, polarity, properties, isAmongPlain);
        }
    };
    struct OfContour : CJOBXlayObjOX
    {
        static void Begin(CJOBXlayObjOX& element, unsigned char kind, const CPointD& point, const CPointD& center,
                          unsigned char clockwise) noexcept
        {
            CJOBXlayObjOX::Begin(element, kind, point, center, clockwise);
        }
    };

    // A record of that class with its defaults.
    template <class T>
    std::unique_ptr<T> New()
    {
        return std::unique_ptr<T>(record_pool::Make<T>(kIsPlain<T> ? m_plain : m_owning, m_properties.get()));
    }

    std::unique_ptr<CJOBXlayObjOX> Element(int lineNumber, unsigned char kind, const FeaturePoint& point,
                                           const FeaturePoint& center = {}, unsigned char clockwise = 0)
    {
        auto element = New<CJOBXlayObjOX>();
        OfContour::Begin(*element, kind, PointOf(point), PointOf(center), clockwise);
        element->SetLineNumber(lineNumber);
        return element;
    }

    // 0 for an uncommon text.
    static unsigned char NumberOfDirection(std::string_view text) noexcept
    {
        if (text == "Y")
            return kClockwise;
        return text == "N" ? kCounterClockwise : 0;
    }
    static CPointD PointOf(const FeaturePoint& point) { return {point.x, point.y}; }

    template <class T>
    static void Fill(T& feature, char type, const FeatureFields& fields, int index,
                     const CJOBXPropertyArray* properties)
    {
        const bool isUsual = fields.polarity.size() == 1 && Feature::IsCharacter(fields.polarity.front());
        Feature::Begin(feature, type, isUsual ? fields.polarity.front() : 'P', properties, kIsPlain<T>);
        feature.SetDcode(fields.dcode);
        feature.SetSymbolNumber(fields.symbol);
        feature.SetFeatureIndex(index);
        if (!isUsual)
            feature.SetPolarity(CString(fields.polarity));
    }

    std::unique_ptr<CFeatureProperties, Releaser> m_properties;
    CRecordRoom& m_plain = record_pool::PlainRoom();
    CRecordRoom& m_owning = record_pool::OwningRoom();
};
