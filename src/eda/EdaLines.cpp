#include "eda/EdaLines.h"

#include "eda/CJOBXdata.h"
#include "eda/CJOBXdataPkgObjContour.h"
#include "eda/CJOBXeda.h"
#include "eda/EdaFormat.h"
#include "foundation/CommonFields.h"
#include "foundation/base/NumberText.h"
#include "saving/CAttributeTables.h"
#include "saving/COptionalFields.h"

#include <initializer_list>

namespace
{
constexpr int kUnknown = CRecordLines::kUnknownLine;

// Prints "PRP name 'value' 1.5 2".
void ListProperty(int depth, std::string_view name, std::string_view value, const CStringArray& further,
                  CRecordLines& lines)
{
    lines.Begin(depth, kUnknown);
    lines.Word(eda_format::kProperty);
    if (name.empty() && value.empty())
        return;
    lines.Word(name).EndKey().Word("'").Glue(value).Glue("'");
    for (INT_PTR i = 0; i < further.GetSize(); ++i)
        lines.Word(further[i].View());
}

// The attributes of a pin that are in its tail; null for those of PRP lines, which have no number.
struct NumberedAttributes
{
    explicit NumberedAttributes(const CJOBXdataPkgPin& pin) : all(jobx::TailAttributes{}(pin)) {}

    __int64 GetSize() const { return all.GetSize(); }
    const CJOBXProperty* GetAt(__int64 index) const
    {
        const CJOBXProperty* const attribute = all.GetAt(index);
        return attribute != nullptr && attribute->m_nNumber >= 0 ? attribute : nullptr;
    }

    jobx::TailAttributes::Found all;
};

// One outline, from its geometry or its parameters.
class COutlineLines
{
public:
    COutlineLines(int depth, CRecordLines& lines) : m_depth(depth), m_lines(lines) {}

    // False if it has no geometry, or a keyword that its geometry does not fit.
    bool ListGeometry(const CJOBXdataPkgObj& outline)
    {
        const std::string_view keyword = outline.m_sKeyword.View();
        m_parameters = &outline.m_arrParameters;
        if (keyword == eda_format::kCircle)
            return ListAs<CJOBXdataPkgObjCircle>(outline);
        if (keyword == eda_format::kSquare)
            return ListAs<CJOBXdataPkgObjSquare>(outline);
        if (keyword == eda_format::kRectangle)
            return ListAs<CJOBXdataPkgObjRectangle>(outline);
        return keyword == eda_format::kContour && ListAs<CJOBXdataPkgObjContour>(outline);
    }
    void ListPlain(const CJOBXdataPkgObj& outline)
    {
        Begin(outline.m_sKeyword.View());
        for (INT_PTR i = 0; i < outline.m_arrParameters.GetSize(); ++i)
            m_lines.Word(outline.m_arrParameters[i].View());
    }
    // Behind the first line: those of a contour.
    void ListRest(const CJOBXdataPkgObj& outline)
    {
        const auto* const contour = dynamic_cast<const CJOBXdataPkgObjContour*>(&outline);
        if (contour == nullptr)
            return;
        for (const CJOBXlayObjOX& element : contour->m_arrElements.Records())
            ListElement(element);
        Begin(eda_format::kContourEnd);
    }

private:
    void Begin(std::string_view keyword)
    {
        m_lines.Begin(m_depth, kUnknown);
        m_lines.Word(keyword);
    }
    template <class Shape>
    bool ListAs(const CJOBXdataPkgObj& outline)
    {
        const auto* const shape = dynamic_cast<const Shape*>(&outline);
        if (shape == nullptr)
            return false;
        Begin(outline.m_sKeyword.View());
        List(*shape);
        return true;
    }
    void List(const CJOBXdataPkgObjCircle& circle) { List(circle.m_ptCenter, {circle.m_dRadius}); }
    void List(const CJOBXdataPkgObjSquare& square) { List(square.m_ptCenter, {square.m_dHalfSide}); }
    void List(const CJOBXdataPkgObjRectangle& rectangle)
    {
        List(rectangle.m_ptLowerLeft, {rectangle.m_dWidth, rectangle.m_dHeight});
    }
    void List(const CJOBXdataPkgObjContour& /*contour*/) {}
    // A parameter that still has the value keeps its spelling.
    void List(const CPointD& point, std::initializer_list<double> lengths)
    {
        INT_PTR at = 0;
        ListNumber(at++, point.x);
        ListNumber(at++, point.y);
        for (const double length : lengths)
            ListNumber(at++, length);
    }
    void ListNumber(INT_PTR at, double value)
    {
        const std::string_view text = at < m_parameters->GetSize() ? (*m_parameters)[at].View() : std::string_view();
        const NumberRead<double> read = ReadReal(text.data(), text.data() + text.size());
        if (!text.empty() && read.end == text.data() + text.size() && read.value == value)
            m_lines.Word(text);
        else
            m_lines.Real(value);
    }
    void ListElement(const CJOBXlayObjOX& element)
    {
        const CString kind = element.GetKind();
        Begin(kind.View());
        if (kind.View() == eda_format::kPolygonEnd)
            return;
        m_lines.Real(element.GetPoint().x).Real(element.GetPoint().y);
        if (kind.View() == eda_format::kPolygon)
            m_lines.Word(element.GetPolygonType().View());
        else if (kind.View() == eda_format::kCurve)
            m_lines.Real(element.GetCenterPoint().x)
                .Real(element.GetCenterPoint().y)
                .Word(element.GetClockwise().View());
    }

    int m_depth;
    CRecordLines& m_lines;
    const CStringArray* m_parameters = nullptr; // of the outline that is printed
};

class CEdaLines
{
public:
    CEdaLines(const CJOBXdata& data, const CAttributeTypes& types, const CMendedReferences& references,
              CRecordLines& lines)
        : m_data(data),
          m_references(references),
          m_lines(lines),
          m_tables(*data.GetAttributeNameNumbers(), data.m_arrAttributeNames, *data.GetAttributeTextNumbers(),
                   data.m_arrAttributeTexts, types)
    {
    }

    void List()
    {
        ListHead();
        Collect();
        m_tables.ListLines(m_lines);
        int position = 0;
        for (const CJOBXdataNet& net : m_data.m_arrNets.Records())
            ListNet(net, position++);
        position = 0;
        for (const CJOBXdataPkg& package : m_data.m_arrPkgs.Records())
            ListPackage(package, position++);
        for (const CJOBXdataFgr& group : m_data.GetFeatureGroups()->Records())
            ListGroup(group);
    }

private:
    void ListHead()
    {
        if (!m_data.m_sHeader.IsEmpty())
            Begin(0, kUnknown, eda_format::kHeader).Word(m_data.m_sHeader.View());
        m_lines.KeyValue(0, "UNITS", m_data.GetUnit() == JOBXunit::Millimetre ? "MM" : "INCH");
        std::vector<std::string> names;
        for (INT_PTR i = 0; i < m_data.m_arrLayerNames.GetSize(); ++i)
            names.emplace_back(m_data.m_arrLayerNames[i].View());
        if (const std::vector<std::string>* const mended = m_references.FindLayerNames(&m_data))
            names = *mended;
        if (names.empty())
            return;
        Begin(0, kUnknown, eda_format::kLayers);
        for (const std::string& name : names)
            m_lines.Word(name);
    }

    // The attributes of all tails, so that the tables have what they need.
    void Collect()
    {
        for (const CJOBXdataNet& net : m_data.m_arrNets.Records())
        {
            CollectTail(net);
            for (const CJOBXSnt& subnet : net.m_arrSnts.Records())
                CollectTail(subnet);
        }
        for (const CJOBXdataPkg& package : m_data.m_arrPkgs.Records())
        {
            CollectTail(package);
            CollectTails(package.m_arrOutlines);
            for (const CJOBXdataPkgPin& pin : package.m_arrPins.Records())
            {
                m_tables.Collect(NumberedAttributes(pin));
                CollectTails(pin.m_arrOutlines);
            }
        }
        for (const CJOBXdataFgr& group : m_data.GetFeatureGroups()->Records())
            CollectTail(group);
    }
    void CollectTail(const CJOBXtailed& record) { m_tables.Collect(jobx::TailAttributes{}(record)); }
    void CollectTails(const CJOBXdataPkgObjArray& outlines)
    {
        for (const CJOBXdataPkgObj& outline : outlines.Records())
            CollectTail(outline);
    }

    CRecordLines& Begin(int depth, int sourceLine, std::string_view keyword)
    {
        m_lines.Begin(depth, sourceLine);
        return m_lines.Word(keyword);
    }
    void EndRecord(const CJOBXtailed& record) { EndRecord(jobx::TailAttributes{}(record), record.GetID()); }
    template <class Attributes>
    void EndRecord(const Attributes& attributes, __int64 id)
    {
        GlueTail(m_tables.TextOf(attributes), id, m_lines);
    }
    void Announce(std::string_view keyword, int position)
    {
        m_lines.BeginAbove(0);
        m_lines.Word(keyword).EndKey().Integer(position);
    }
    template <class Properties>
    void ListProperties(const Properties& properties)
    {
        for (const CJOBXProperty& property : properties.Records())
            ListProperty(1, property.m_sName.View(), property.m_sValue.View(), property.m_arrFurtherValues, m_lines);
    }

    void ListNet(const CJOBXdataNet& net, int position)
    {
        Announce(eda_format::kNumberedNet, position);
        Begin(0, net.GetSourceLine(), eda_format::kNet);
        if (!net.m_sName.IsEmpty())
            m_lines.Word(net.m_sName.View());
        EndRecord(net);
        ListProperties(net.m_arrProperties);
        for (const CJOBXSnt& subnet : net.m_arrSnts.Records())
            ListSubnet(subnet);
    }
    void ListSubnet(const CJOBXSnt& subnet)
    {
        COptionalFields fields(Begin(1, subnet.m_nLineNumber, eda_format::kSubnet));
        fields.Text(subnet.m_sKind.View());
        if (subnet.m_sKind.View() == eda_format::kToeprint)
        {
            int component = subnet.m_nComponentNumber;
            int toeprint = subnet.m_nToeprintNumber;
            if (const CMendedReferences::Numbers* const mended = m_references.Find(&subnet))
            {
                component = mended->isGone ? -1 : mended->values[0];
                toeprint = mended->isGone ? -1 : mended->values[1];
            }
            fields.Text(subnet.m_sSide.View()).Integer(component, -1).Integer(toeprint, -1);
        }
        else if (subnet.m_sKind.View() == eda_format::kPlane)
        {
            fields.Text(subnet.m_sFillType.View()).Text(subnet.m_sCutoutType.View()).Real(subnet.m_dFillSize);
        }
        EndRecord(subnet);
        ListFeatures(2, subnet.m_arrNetObjs);
    }
    void ListFeatures(int depth, const CJOBXdataNetObjArray& features)
    {
        for (const CJOBXdataNetObj& feature : features.Records())
        {
            const CMendedReferences::Numbers* const mended = m_references.Find(&feature);
            if (mended != nullptr && mended->isGone)
                continue;
            COptionalFields fields(Begin(depth, feature.m_nLineNumber, eda_format::kFeature));
            fields.Text(feature.m_sKind.View())
                .Integer(mended != nullptr ? mended->values[0] : feature.m_nLayerIndex, -1)
                .Integer(mended != nullptr ? mended->values[1] : feature.m_nFeatureIndex, -1);
            if (!feature.m_sText.IsEmpty())
                m_lines.Glue(";").Glue(feature.m_sText.View());
        }
    }

    void ListPackage(const CJOBXdataPkg& package, int position)
    {
        Announce(eda_format::kNumberedPackage, position);
        COptionalFields fields(Begin(0, package.GetSourceLine(), eda_format::kPackage));
        fields.Text(package.m_sName.View())
            .Real(package.m_dPitch)
            .Point(package.m_ptLowerLeft)
            .Point(package.m_ptUpperRight);
        EndRecord(package);
        ListOutlines(1, package.m_arrOutlines);
        ListProperties(package.m_arrProperties);
        for (const CLProperty& property : package.m_arrAttributes.Records())
            ListProperty(1, property.m_sName.View(), property.m_sValue.View(), {}, m_lines);
        for (const CJOBXdataPkgPin& pin : package.m_arrPins.Records())
            ListPin(pin);
    }
    void ListPin(const CJOBXdataPkgPin& pin)
    {
        COptionalFields fields(Begin(1, pin.GetSourceLine(), eda_format::kPin));
        fields.Text(pin.m_sName.View()).Text(pin.m_sType.View()).Point(pin.m_ptCenter).Real(pin.m_dHoleSize);
        fields.Text(pin.m_sElectricalType.View(), "U").Text(pin.m_sMountType.View());
        const NumberedAttributes attributes(pin);
        EndRecord(attributes, pin.GetID());
        ListOutlines(2, pin.m_arrOutlines);
        if (const CJOBXPropertyArray* const all = pin.pGetTailAttributes())
            for (const CJOBXProperty& property : all->Records())
                if (property.m_nNumber < 0)
                    ListProperty(2, property.m_sName.View(), property.m_sValue.View(), property.m_arrFurtherValues,
                                 m_lines);
    }
    void ListOutlines(int depth, const CJOBXdataPkgObjArray& outlines)
    {
        COutlineLines outlineLines(depth, m_lines);
        for (const CJOBXdataPkgObj& outline : outlines.Records())
        {
            const bool hasGeometry = outlineLines.ListGeometry(outline);
            if (!hasGeometry)
                outlineLines.ListPlain(outline);
            EndRecord(outline);
            if (hasGeometry)
                outlineLines.ListRest(outline);
        }
    }
    void ListGroup(const CJOBXdataFgr& group)
    {
        COptionalFields fields(Begin(0, group.m_nLineNumber, eda_format::kFeatureGroup));
        fields.Text(group.m_sKind.View());
        EndRecord(group);
        ListProperties(group.m_arrProperties);
        ListFeatures(1, group.m_arrNetObjs);
    }

    const CJOBXdata& m_data;
    const CMendedReferences& m_references;
    CRecordLines& m_lines;
    CAttributeTables m_tables;
};
} // namespace

void ListLines(const CJOBXdata& data, const CAttributeTypes& types, const CMendedReferences& references,
               CRecordLines& lines)
{
    CEdaLines(data, types, references, lines).List();
}

void ListLines(const CJOBXeda& eda, CRecordLines& lines)
{
    const CStringArray& shorts = eda.GetShorts();
    for (INT_PTR i = 0; i < shorts.GetSize(); ++i)
    {
        lines.Begin(0, CRecordLines::kUnknownLine);
        lines.Word(shorts[i].View()).EndKey();
    }
}
