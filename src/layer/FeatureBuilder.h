// Adds the records that a features reader makes to the layer.
#pragma once

#include "layer/CJOBXlayer.h"
#include "layer/FeatureMaker.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

// The features of one file as they come, with the surface and the contour that are open.
class CFeatureBuilder
{
public:
    explicit CFeatureBuilder(CJOBXlayer& layer)
        : m_features(*layer.GetFeatures()), m_count(m_features.GetSize()), m_room(m_count)
    {
    }
    CFeatureBuilder(const CFeatureBuilder&) = delete;
    CFeatureBuilder& operator=(const CFeatureBuilder&) = delete;
    // Without an end of the file the array only becomes shorter, which needs no memory.
    ~CFeatureBuilder() { m_features.SetSize(m_count); } // NOLINT(bugprone-exception-escape)

    // Takes over a property list that features are going to borrow.
    const CJOBXPropertyArray* Keep(std::unique_ptr<CJOBXPropertyArray> list) { return m_maker.Keep(std::move(list)); }
    // How many features there were, surfaces that never ended among them.
    int Count() const noexcept { return m_nextIndex; }
    void Finish()
    {
        m_features.SetSize(m_count);
        m_features.FreeExtra();
        m_room = m_count;
    }

    // `properties` is null or a list that Keep took.
    template <class Record>
    CJOBXlayObj& AddFeature(const Record& record, const CJOBXPropertyArray* properties)
    {
        std::unique_ptr<CJOBXlayObj> feature = m_maker.Make(record, m_nextIndex, properties);
        CJOBXlayObj& added = *feature;
        Own(std::move(feature));
        ++m_nextIndex;
        return added;
    }

    // A surface that is still open is dropped; its index is not used again.
    CJOBXlayObjSurface& OpenSurface(const SurfaceFields& record, const CJOBXPropertyArray* properties)
    {
        m_surface = m_maker.Make(record, m_nextIndex, properties);
        ++m_nextIndex;
        return *m_surface;
    }
    bool HasSurface() const noexcept { return m_surface != nullptr; }
    // Adds it to the features; an open contour is not touched.
    void CloseSurface() { Own(std::move(m_surface)); }

    // A contour that is still open is dropped.
    void OpenContour() noexcept
    {
        m_elements.clear();
        m_contourIsOpen = true;
    }
    bool HasContour() const noexcept { return m_contourIsOpen; }
    template <class Record>
    void AddElement(const Record& record, int lineNumber)
    {
        AddElement(m_maker.Make(record, lineNumber));
    }
    // Gives the contour its end and adds it to the open surface.
    void CloseContour(int lineNumber)
    {
        AddElement(m_maker.MakeEnd(lineNumber));
        auto contour = std::make_unique<CJOBXlayObjSurfaceOB>();
        CJOBXlayObjOXArray& elements = *contour->GetODBlayObjOXArray();
        record_pool::Extend(elements, static_cast<std::ptrdiff_t>(m_elements.size()));
        CJOBXlayObjOX** place = elements.GetData();
        for (std::unique_ptr<CJOBXlayObjOX>& element : m_elements)
            *place++ = element.release();
        m_elements.clear();
        m_contourIsOpen = false;
        m_surface->GetContours()->Own(std::move(contour));
    }

private:
    void Own(std::unique_ptr<CJOBXlayObj> feature)
    {
        if (m_count == m_room)
            MakeRoom();
        m_features.GetData()[m_count++] = feature.release();
    }
    void AddElement(std::unique_ptr<CJOBXlayObjOX> element)
    {
        if (m_elements.size() == m_elements.capacity())
            m_elements.reserve(std::max<std::size_t>(64, 2 * m_elements.size()));
        m_elements.push_back(std::move(element));
    }
    // Doubling: the array's own steps are made for lists that stay short.
    void MakeRoom()
    {
        const __int64 room = std::max<__int64>(64, 2 * m_count);
        m_features.SetSize(room);
        m_room = room;
    }

    CJOBXlayObjArray& m_features; // its entries from m_count on are null until the end
    __int64 m_count;
    __int64 m_room;
    CFeatureMaker m_maker;
    int m_nextIndex = 0;
    std::unique_ptr<CJOBXlayObjSurface> m_surface;
    std::vector<std::unique_ptr<CJOBXlayObjOX>> m_elements; // of the open contour
    bool m_contourIsOpen = false;
};
