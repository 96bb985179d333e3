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
    explicit CFeatureBuilder(CJOBXlayer& layer) : m_features(*layer.GetFeatures()) {}

    // Takes over a property list that features are going to borrow.
    const CJOBXPropertyArray* Keep(std::unique_ptr<CJOBXPropertyArray> list) { return m_maker.Keep(std::move(list)); }
    // How many features there were, surfaces that never ended among them.
    int Count() const noexcept { return m_nextIndex; }
    void Finish() { m_features.FreeExtra(); }

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
        elements.Reserve(static_cast<__int64>(m_elements.size()));
        for (std::unique_ptr<CJOBXlayObjOX>& element : m_elements)
            elements.Own(std::move(element));
        m_elements.clear();
        m_contourIsOpen = false;
        m_surface->GetContours()->Own(std::move(contour));
    }

private:
    void Own(std::unique_ptr<CJOBXlayObj> feature)
    {
        MakeRoom();
        m_features.Add(feature.release());
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
        if (m_features.GetSize() < m_room)
            return;
        m_room = std::max<__int64>(64, 2 * m_features.GetSize());
        m_features.Reserve(m_room);
    }

    CJOBXlayObjArray& m_features;
    CFeatureMaker m_maker;
    __int64 m_room = 0; // of the features
    int m_nextIndex = 0;
    std::unique_ptr<CJOBXlayObjSurface> m_surface;
    std::vector<std::unique_ptr<CJOBXlayObjOX>> m_elements; // of the open contour
    bool m_contourIsOpen = false;
};
