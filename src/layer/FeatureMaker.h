// How the features reader makes records: in the blocks of its file, every field at once.
#pragma once

#include "foundation/CJOBXProperty.h"
#include "foundation/CRecordStore.h"
#include "layer/CJOBXlayObj.h"

#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

// The lists of properties that a file's features have in common: features with equal attribute texts borrow one list
// until one of them changes its own. The lists live as long as a block with features of the file.
class CFeatureProperties : public CRecordKeep
{
public:
    // Takes the list over.
    const CJOBXPropertyArray* Keep(std::unique_ptr<CJOBXPropertyArray> list)
    {
        m_lists.push_back(std::move(list));
        return m_lists.back().get();
    }

private:
    std::vector<std::unique_ptr<CJOBXPropertyArray>> m_lists;
};

// Makes the records of one file.
// Threads: one maker on one thread at a time.
class CFeatureMaker
{
public:
    // The numbers under which contour elements keep their usual texts.
    static constexpr unsigned char kSegment = 2;
    static constexpr unsigned char kArc = 3;
    static constexpr unsigned char kClockwise = 1;
    static constexpr unsigned char kCounterClockwise = 2;

    struct Point
    {
        double x = 0.0;
        double y = 0.0;
    };
    // What every feature has.
    struct Common
    {
        int symbol = -1;
        char polarity = 'P'; // "P" or "N"
        int dcode = 0;
        const CJOBXPropertyArray* properties = nullptr; // kept by the maker's properties
    };

    CFeatureMaker() : m_properties(new CFeatureProperties), m_plain(m_properties.get()), m_owning(m_properties.get()) {}

    CFeatureProperties& Properties() noexcept { return *m_properties; }

    CJOBXlayObj* Line(const Common& common, int index, const Point& start, const Point& end)
    {
        auto* const line = m_plain.Make<CJOBXlayObjLine>();
        Fill(*line, 'L', common, index);
        line->m_ptStart = PlaceOf(start);
        line->m_ptEnd = PlaceOf(end);
        return line;
    }
    CJOBXlayObj* Arc(const Common& common, int index, const Point& start, const Point& end, const Point& center,
                     char clockwise)
    {
        auto* const arc = m_plain.Make<CJOBXlayObjArc>();
        Fill(*arc, 'A', common, index);
        arc->m_ptStart = PlaceOf(start);
        arc->m_ptEnd = PlaceOf(end);
        arc->m_ptCenter = PlaceOf(center);
        arc->m_cClockwise = clockwise;
        return arc;
    }
    CJOBXlayObj* Pad(const Common& common, int index, const Point& center, int orientation)
    {
        auto* const pad = m_plain.Make<CJOBXlayObjPad>();
        Fill(*pad, 'P', common, index);
        pad->m_ptCenter = PlaceOf(center);
        pad->m_nOrientation = orientation;
        return pad;
    }
    CJOBXlayObjOX* Segment(int lineNumber, const Point& point)
    {
        auto* const element = m_plain.Make<CJOBXlayObjOX>();
        element->m_nLineNumber = lineNumber;
        element->m_nKind = kSegment;
        element->m_dX = point.x;
        element->m_dY = point.y;
        return element;
    }
    CJOBXlayObjOX* ContourArc(int lineNumber, const Point& point, const Point& center, bool clockwise)
    {
        CJOBXlayObjOX* const element = Segment(lineNumber, point);
        element->m_nKind = kArc;
        element->m_nClockwise = clockwise ? kClockwise : kCounterClockwise;
        element->m_dCenterX = center.x;
        element->m_dCenterY = center.y;
        return element;
    }

    // A record of that class with its defaults.
    template <class T>
    std::unique_ptr<T> New()
    {
        if constexpr (kIsPlain<T>)
            return std::unique_ptr<T>(m_plain.Make<T>());
        else
            return std::unique_ptr<T>(m_owning.MakeOwning<T>());
    }
    // Lets the feature, which this maker made and which has no properties yet, borrow the list.
    static void SetProperties(CJOBXlayObj& feature, const CJOBXPropertyArray* list) { feature.BorrowProperties(list); }

private:
    struct Releaser
    {
        void operator()(CFeatureProperties* properties) const noexcept { properties->Release(); }
    };

    // Those whose texts are short, so that nearly all of them own nothing: they lie in blocks of their own.
    template <class T>
    static constexpr bool kIsPlain = std::is_same_v<T, CJOBXlayObjLine> || std::is_same_v<T, CJOBXlayObjPad> ||
                                     std::is_same_v<T, CJOBXlayObjArc> || std::is_same_v<T, CJOBXlayObjOX>;

    static CJOBXlayObj::Place PlaceOf(const Point& point) noexcept
    {
        CJOBXlayObj::Place place;
        place.x = point.x;
        place.y = point.y;
        return place;
    }

    static void Fill(CJOBXlayObj& feature, char type, const Common& common, int index) noexcept
    {
        feature.m_nLink = reinterpret_cast<std::uintptr_t>(common.properties);
        feature.m_nDcode = common.dcode;
        feature.m_nSymbol = common.symbol;
        feature.m_nIndex = index;
        feature.m_cPolarity = common.polarity;
        feature.m_cType = type;
    }

    std::unique_ptr<CFeatureProperties, Releaser> m_properties;
    CRecordStore m_plain;
    CRecordStore m_owning;
};
