#include "diff/MeaningDiff.h"

#include "diff/FeaturePairs.h"
#include "diff/NamedDiff.h"
#include "diff/SameFiles.h"
#include "info/Extents.h"
#include "model/LayerRoles.h"
#include "model/RecordCounts.h"
#include "model/SymbolSize.h"
#include "output/ProgressLine.h"
#include "output/Text.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <unordered_set>

namespace
{
std::string PlaceName(const std::string& around, std::string_view word, std::string_view name)
{
    return (around.empty() ? "" : around + " / ") + std::string(word) + " " + Printable(name);
}

// A component and the file that it is in.
struct PlacedComponent
{
    const CJOBXcomponents* file;
    const CJOBXcmp* component;
};

std::vector<PlacedComponent> ComponentsOf(const CJOBXstepObj& step)
{
    std::vector<PlacedComponent> components;
    for (const CJOBXcomponents& file : step.m_arrComponents.Records())
        for (const CJOBXcmp& component : file.m_arrCmps.Records())
            components.push_back({&file, &component});
    return components;
}

// What a step's records refer to, and how far it is moved.
struct StepView
{
    StepView(const CJOBXstepObj& theStep, const UserSymbolNames& theSymbols)
        : step(theStep), tables(theStep), symbols(theSymbols)
    {
    }

    FileView Of(double factor, const CJOBXlayer* layer, bool isPlaced) const
    {
        FileView view;
        view.factor = factor;
        view.symbols = &symbols;
        view.layer = layer;
        view.step = &tables;
        view.features = &features;
        if (isPlaced)
            view.shift = shift;
        return view;
    }

    const CJOBXstepObj& step;
    StepTables tables;
    const UserSymbolNames& symbols;
    FeatureNumbers features;
    CPointD shift;
};

class MeaningComparison
{
public:
    MeaningComparison(DiffCollector& collector, const MeaningRules& rules, const CJOBX& a, const CJOBX& b)
        : m_collector(collector),
          m_rules(rules),
          m_diff(collector, rules.tolerance, {Wants(DiffPart::Components), Wants(DiffPart::Nets)}),
          m_a(a),
          m_b(b),
          m_symbolsA(*a.m_pSpecialSymbols),
          m_symbolsB(*b.m_pSpecialSymbols),
          m_areasA(*a.m_pSpecialSymbols),
          m_areasB(*b.m_pSpecialSymbols),
          m_progress("comparing", rules.isQuiet, CountFeatures(a) + CountNetFeatures(a))
    {
    }

    JobChanges Jobs(const std::string& pathA, const std::string& pathB)
    {
        if (Wants(DiffPart::Info))
            At("info", [&] { m_diff.Fields(*m_a.m_pMisc, Plain(*m_a.m_pMisc), *m_b.m_pMisc, Plain(*m_b.m_pMisc)); });
        if (Wants(DiffPart::Matrix))
            At("matrix", [&] { Matrix(*m_a.m_pMatrix, *m_b.m_pMatrix); });
        if (Wants(DiffPart::Font))
            At("font",
               [&] { m_diff.Fields(*m_a.m_pFonts, Plain(*m_a.m_pFonts), *m_b.m_pFonts, Plain(*m_b.m_pFonts)); });
        if (Wants(DiffPart::Symbols))
            At("job", [&] { Symbols(); });
        At("job", [&] { Steps(); });
        if (Wants(DiffPart::Files))
            At("files not read", [&] { m_changes.otherFiles = OtherFiles(pathA, pathB); });
        return std::move(m_changes);
    }

private:
    bool Wants(DiffPart part) const { return m_rules.only.empty() || m_rules.only.contains(part); }

    template <class Compare>
    void At(const std::string& place, Compare compare)
    {
        const DiffPlace here(m_collector, place);
        compare();
    }

    template <class Measured>
    static FileView Plain(const Measured& measured)
    {
        FileView view;
        view.factor = measured.dGetFactorToMM();
        return view;
    }

    // Names in the order of the rows, as far as both have them.
    template <class List>
    static std::vector<std::string> CommonNames(const List& list, const List& other)
    {
        std::unordered_set<std::string> names;
        for (const auto& record : other.Records())
            names.insert(FoldedName(record.m_sName.View()));
        std::vector<std::string> common;
        for (const auto& record : list.Records())
            if (const std::string name = FoldedName(record.m_sName.View()); names.contains(name))
                common.push_back(name);
        return common;
    }

    void Matrix(const CJOBXmatrix& a, const CJOBXmatrix& b)
    {
        m_diff.Fields(a, {}, b, {});
        if (CommonNames(a.m_arrLayers, b.m_arrLayers) != CommonNames(b.m_arrLayers, a.m_arrLayers))
            m_collector.Add("matrix", DiffChange::Changed, "order of layers");
        if (CommonNames(a.m_arrSteps, b.m_arrSteps) != CommonNames(b.m_arrSteps, a.m_arrSteps))
            m_collector.Add("matrix", DiffChange::Changed, "order of steps");
    }

    void Symbols()
    {
        const auto nameOf = [](const CJOBXSpecialSymbol& symbol)
        { return FoldedName(CKUtility::GetInstance()->GetSegmntFromFilePath(symbol.m_sPath, 2).View()); };
        m_diff.Pairs(ListedOf(*m_a.m_pSpecialSymbols), ListedOf(*m_b.m_pSpecialSymbols), nameOf,
                     [&](const CJOBXSpecialSymbol& a, const CJOBXSpecialSymbol& b)
                     {
                         FileView viewA = Plain(*a.GetLayer());
                         FileView viewB = Plain(*b.GetLayer());
                         viewA.symbols = &m_symbolsA;
                         viewB.symbols = &m_symbolsB;
                         viewA.layer = a.GetLayer();
                         viewB.layer = b.GetLayer();
                         At("symbol " + nameOf(a), [&] { m_diff.Fields(*a.GetLayer(), viewA, *b.GetLayer(), viewB); });
                     });
    }

    void Steps()
    {
        m_diff.Pairs(
            ListedOf(m_a.m_pSteps->m_arrSteps), ListedOf(m_b.m_pSteps->m_arrSteps),
            [](const CJOBXstepObj& step) { return FoldedName(step.m_sName.View()); },
            [&](const CJOBXstepObj& a, const CJOBXstepObj& b)
            {
                StepView viewA(a, m_symbolsA);
                StepView viewB(b, m_symbolsB);
                StepChanges& changes = m_changes.steps.emplace_back();
                changes.name = Printable(a.m_sName.View());
                if (m_rules.align)
                    Align(changes, viewA, viewB);
                Step(changes, viewA, viewB);
            });
    }

    // Names that are equal but for their letter case.
    void Spelling(std::string_view kind, const CString& a, const CString& b)
    {
        if (a != b)
            m_collector.Add(kind, DiffChange::Changed, "name", a.View(), b.View());
    }

    void Step(StepChanges& changes, StepView& a, StepView& b)
    {
        const std::string place = PlaceName("", "step", a.step.m_sName.View());
        At(place, [&] { Spelling("step", a.step.m_sName, b.step.m_sName); });
        if (Wants(DiffPart::Headers))
        {
            At(place, [&] { m_diff.Fields(a.step, FileView{}, b.step, FileView{}); });
            At(place + " / header",
               [&]
               {
                   const CJOBXstephdr& headerA = *a.step.GetHeader();
                   const CJOBXstephdr& headerB = *b.step.GetHeader();
                   m_diff.Fields(headerA, a.Of(headerA.dGetFactorToMM(), nullptr, true), headerB,
                                 b.Of(headerB.dGetFactorToMM(), nullptr, true));
               });
        }
        Layers(changes, place, a, b); // also tells which features are the same, for the nets
        if (Wants(DiffPart::Components) || Wants(DiffPart::Nets))
            At(place + " / components", [&] { Components(changes, a, b); });
        At(place + " / eda", [&] { Eda(changes, a, b); });
        if (Wants(DiffPart::Nets))
            At(place + " / shorts",
               [&] { m_diff.Words("short", a.step.GetEda()->GetShorts(), b.step.GetEda()->GetShorts()); });
        if (Wants(DiffPart::Netlists))
            Netlists(place, a, b);
    }

    // The shift that most components have in common; without components, that of the profile's corner.
    void Align(StepChanges& changes, const StepView& a, StepView& b)
    {
        std::unordered_map<std::string, CPointD> places;
        for (const PlacedComponent& each : ComponentsOf(a.step))
            places.try_emplace(std::string(each.component->m_sName.View()),
                               Scaled(each.component->m_ptLocation, each.file->dGetFactorToMM()));
        std::map<std::pair<double, double>, std::int64_t> votes;
        for (const PlacedComponent& each : ComponentsOf(b.step))
            if (const auto found = places.find(std::string(each.component->m_sName.View())); found != places.end())
            {
                const CPointD place = Scaled(each.component->m_ptLocation, each.file->dGetFactorToMM());
                ++votes[{Micron(place.x - found->second.x), Micron(place.y - found->second.y)}];
            }
        const auto most = std::max_element(
            votes.begin(), votes.end(), [](const auto& one, const auto& other) { return one.second < other.second; });
        const std::pair<double, double> shift = most != votes.end() ? most->first : ShiftOfProfile(a.step, b.step);
        if (shift == std::pair(0.0, 0.0))
            return;
        changes.shift = shift;
        b.shift = CPointD(-shift.first, -shift.second);
    }

    static CPointD Scaled(const CPointD& point, double factor) { return {point.x * factor, point.y * factor}; }
    static double Micron(double number) { return std::round(number * 1e6) / 1e6 + 0.0; }

    static std::pair<double, double> ShiftOfProfile(const CJOBXstepObj& a, const CJOBXstepObj& b)
    {
        Extents extentsA;
        Extents extentsB;
        extentsA.Add(*a.GetProfile());
        extentsB.Add(*b.GetProfile());
        if (extentsA.IsEmpty() || extentsB.IsEmpty())
            return {0.0, 0.0};
        const CPointD cornerA = Scaled(extentsA.LowerLeft(), a.GetProfile()->dGetFactorToMM());
        const CPointD cornerB = Scaled(extentsB.LowerLeft(), b.GetProfile()->dGetFactorToMM());
        return {Micron(cornerB.x - cornerA.x), Micron(cornerB.y - cornerA.y)};
    }

    void Layers(StepChanges& changes, const std::string& place, StepView& a, StepView& b)
    {
        At(place,
           [&]
           {
               m_diff.Pairs(
                   ListedOf(a.step.m_arrLayers), ListedOf(b.step.m_arrLayers),
                   [](const CJOBXlayer& layer) { return FoldedName(layer.m_sName.View()); },
                   [&](const CJOBXlayer& layerA, const CJOBXlayer& layerB)
                   {
                       At(PlaceName(place, "layer", layerA.m_sName.View()),
                          [&]
                          {
                              Spelling("layer", layerA.m_sName, layerB.m_sName);
                              Layer(changes, a, layerA, b, layerB);
                          });
                   });
           });
        if (Wants(DiffPart::Layers))
            At(place + " / profile", [&] { Layer(changes, a, *a.step.GetProfile(), b, *b.step.GetProfile()); });
    }

    void Layer(StepChanges& changes, StepView& a, const CJOBXlayer& layerA, StepView& b, const CJOBXlayer& layerB)
    {
        const FileView viewA = a.Of(layerA.dGetFactorToMM(), &layerA, true);
        const FileView viewB = b.Of(layerB.dGetFactorToMM(), &layerB, true);
        m_progress.Did(layerA.GetFeatures()->GetSize());
        if (!Wants(DiffPart::Layers))
        {
            if (Wants(DiffPart::Nets))
                Number(a, layerA, viewA, b, layerB, viewB);
            return;
        }
        const MeaningMatch match = Features(changes, viewA, viewB);
        if (HaveOtherOrder(match))
            m_collector.Add("layer", DiffChange::Changed, "order of features"); // they are drawn in that order
        Keep(a, layerA, match.a, b, layerB, match.b);
        m_diff.FieldsButFeatures(layerA, viewA, layerB, viewB);
        Drills(changes, layerA, layerB);
    }

    // Returns which features are at the same place in both layers.
    MeaningMatch Features(StepChanges& changes, const FileView& viewA, const FileView& viewB)
    {
        const auto a = ListedOf(*viewA.layer->GetFeatures());
        const auto b = ListedOf(*viewB.layer->GetFeatures());
        MeaningMatch match =
            MatchMeanings(NamedDiff::MeaningsOf(a, viewA), NamedDiff::MeaningsOf(b, viewB), m_rules.tolerance);
        const FeaturePairs pairs = PairFeatures(a, viewA, b, viewB, match);
        for (const FeaturePair& pair : pairs.otherAttributes)
            AddPair(match, pair);
        MeaningMatch withMoved = match;
        for (const MovedPair& moved : pairs.moved)
            AddPair(withMoved, moved.pair);
        m_diff.Unmatched(a, b, withMoved);
        LayerChanges layer{Printable(viewA.layer->m_sName.View()),
                           SumOf(m_areasB, b, *viewB.layer, withMoved.b),
                           SumOf(m_areasA, a, *viewA.layer, withMoved.a),
                           {}};
        for (const MovedPair& moved : pairs.moved)
            Moved(layer.moved, *a[moved.pair.a].record, a[moved.pair.a].index, moved);
        for (const FeaturePair& pair : pairs.otherAttributes)
        {
            const DiffScope scope(m_collector, PlaceOf(*a[pair.a].record), a[pair.a].index);
            m_diff.Lists(jobx::FeatureProperties()(*a[pair.a].record), viewA,
                         jobx::FeatureProperties()(*b[pair.b].record), viewB);
        }
        if (layer.added.count + layer.removed.count + layer.moved.count > 0)
            changes.layers.push_back(std::move(layer));
        return match;
    }

    // Of the features without a partner.
    static FeatureSum SumOf(FeatureAreas& areas, const std::vector<Listed<CJOBXlayObj>>& features,
                            const CJOBXlayer& layer, const std::vector<std::int64_t>& numbers)
    {
        FeatureSum sum;
        for (std::size_t i = 0; i < features.size(); ++i)
            if (numbers[i] < 0)
                areas.Add(sum, *features[i].record, layer);
        return sum;
    }

    void Moved(FeatureMoves& moves, const CJOBXlayObj& feature, std::int64_t index, const MovedPair& moved)
    {
        const std::pair<double, double> way{Micron(moved.to.x - moved.from.x), Micron(moved.to.y - moved.from.y)};
        moves.areAlike = moves.areAlike && (moves.count == 0 || moves.way == way);
        moves.way = way;
        moves.farthest = std::max(moves.farthest, std::hypot(way.first, way.second));
        ++moves.count;
        const RecordPlace place = PlaceOf(feature);
        const DiffScope scope(m_collector, place, index);
        m_collector.Add(place.kind, DiffChange::Changed, "place", InNanometres(moved.from), InNanometres(moved.to));
    }

    static CPointD InNanometres(const CPointD& point) { return {Micron(point.x), Micron(point.y)}; }

    // Whether the records that both have are in another order.
    static bool HaveOtherOrder(const MeaningMatch& match)
    {
        std::vector<std::int64_t> a = match.a;
        std::vector<std::int64_t> b = match.b;
        std::erase(a, -1);
        std::erase(b, -1);
        return a != b;
    }

    void Number(StepView& a, const CJOBXlayer& layerA, const FileView& viewA, StepView& b, const CJOBXlayer& layerB,
                const FileView& viewB) const
    {
        const MeaningMatch match =
            MatchMeanings(NamedDiff::MeaningsOf(ListedOf(*layerA.GetFeatures()), viewA),
                          NamedDiff::MeaningsOf(ListedOf(*layerB.GetFeatures()), viewB), m_rules.tolerance);
        Keep(a, layerA, match.a, b, layerB, match.b);
    }

    static void Keep(StepView& a, const CJOBXlayer& layerA, const std::vector<std::int64_t>& numbersA, StepView& b,
                     const CJOBXlayer& layerB, const std::vector<std::int64_t>& numbersB)
    {
        a.features[FoldedName(layerA.m_sName.View())] = numbersA;
        b.features[FoldedName(layerB.m_sName.View())] = numbersB;
    }

    static std::int64_t CountOnly(const std::vector<std::int64_t>& numbers)
    {
        return std::count_if(numbers.begin(), numbers.end(), [](std::int64_t number) { return number < 0; });
    }

    void Drills(StepChanges& changes, const CJOBXlayer& a, const CJOBXlayer& b) const
    {
        const CJOBXmatrixLayer* const row = m_a.m_pMatrix->m_arrLayers.GetMatrixLayer(a.m_sName);
        if (row == nullptr || !IsDrill(*row))
            return;
        const std::map<double, std::int64_t> sizesA = SizesOf(a);
        const std::map<double, std::int64_t> sizesB = SizesOf(b);
        for (const auto& [size, count] : sizesA)
            if (!sizesB.contains(size) || sizesB.at(size) != count)
                changes.drills[size].first += count;
        for (const auto& [size, count] : sizesB)
            if (!sizesA.contains(size) || sizesA.at(size) != count)
                changes.drills[size].second += count;
    }

    static std::map<double, std::int64_t> SizesOf(const CJOBXlayer& layer)
    {
        std::map<double, std::int64_t> sizes;
        for (const CJOBXlayObj& feature : layer.GetFeatures()->Records())
            if (const std::optional<double> size = SizeOfSymbol(layer, feature.GetSymbolNumber()))
                ++sizes[Micron(*size)];
        return sizes;
    }

    // The nets of pins belong to the nets, all else to the components.
    void Components(StepChanges& changes, const StepView& a, const StepView& b)
    {
        std::unordered_map<const CJOBXcmp*, const CJOBXcomponents*> files;
        std::vector<Listed<CJOBXcmp>> listedA;
        std::vector<Listed<CJOBXcmp>> listedB;
        for (const PlacedComponent& each : ComponentsOf(a.step))
            listedA.push_back({each.component, static_cast<std::int64_t>(files.size())}),
                files[each.component] = each.file;
        for (const PlacedComponent& each : ComponentsOf(b.step))
            listedB.push_back({each.component, static_cast<std::int64_t>(files.size())}),
                files[each.component] = each.file;
        const auto nameOf = [](const CJOBXcmp& component) { return std::string(component.m_sName.View()); };
        if (Wants(DiffPart::Components))
        {
            ComponentFiles(a, b);
            OnlyNames(listedA, listedB, changes.components.removed, changes.components.added);
        }
        m_diff.ScopedPairs(listedA, listedB, nameOf,
                           [&](const CJOBXcmp& componentA, const CJOBXcmp& componentB)
                           {
                               const CJOBXcomponents& fileA = *files.at(&componentA);
                               const CJOBXcomponents& fileB = *files.at(&componentB);
                               const FileView viewA = a.Of(fileA.dGetFactorToMM(), nullptr, true);
                               const FileView viewB = b.Of(fileB.dGetFactorToMM(), nullptr, true);
                               m_diff.Fields(componentA, viewA, componentB, viewB);
                               if (Wants(DiffPart::Nets))
                                   MovedPins(changes.nets, componentA, viewA, componentB, viewB);
                               if (!Wants(DiffPart::Components))
                                   return;
                               Component(changes.components, componentA, viewA, componentB, viewB);
                               Side(changes.components, componentA, fileA, fileB);
                           });
    }

    void Side(ComponentChanges& components, const CJOBXcmp& component, const CJOBXcomponents& fileA,
              const CJOBXcomponents& fileB)
    {
        if (fileA.m_sLayerName.CompareNoCase(fileB.m_sLayerName) == 0)
            return;
        m_collector.Add("component", DiffChange::Changed, "layer", fileA.m_sLayerName.View(),
                        fileB.m_sLayerName.View());
        components.otherSide.push_back(Printable(component.m_sName.View()));
    }

    // Their attribute lists; the components are compared together, because one may have changed its side.
    void ComponentFiles(const StepView& a, const StepView& b)
    {
        m_diff.ScopedPairs(
            ListedOf(a.step.m_arrComponents), ListedOf(b.step.m_arrComponents),
            [](const CJOBXcomponents& file) { return FoldedName(file.m_sLayerName.View()); },
            [&](const CJOBXcomponents& fileA, const CJOBXcomponents& fileB)
            { m_diff.AttributeLists(fileA.pGetAttributeList(), fileB.pGetAttributeList()); });
    }

    void Component(ComponentChanges& components, const CJOBXcmp& a, const FileView& viewA, const CJOBXcmp& b,
                   const FileView& viewB) const
    {
        const std::string name = Printable(a.m_sName.View());
        const double x =
            a.m_ptLocation.x * viewA.factor + viewA.shift.x - b.m_ptLocation.x * viewB.factor - viewB.shift.x;
        const double y =
            a.m_ptLocation.y * viewA.factor + viewA.shift.y - b.m_ptLocation.y * viewB.factor - viewB.shift.y;
        if (!AreNear(x, 0.0, m_rules.tolerance) || !AreNear(y, 0.0, m_rules.tolerance))
        {
            components.moved.push_back(name);
            components.farthest = std::max(components.farthest, std::hypot(x, y));
        }
        if (!AreNear(a.m_dRotation, b.m_dRotation, m_rules.tolerance))
            components.rotated.push_back(name);
        if (a.m_sPartName != b.m_sPartName)
            components.otherPart.push_back(name);
        if (viewA.step->Package(a.m_nPkgRef) != viewB.step->Package(b.m_nPkgRef))
            components.otherPackage.push_back(name);
        if (const std::string properties = OtherProperties(a, b); !properties.empty())
            components.otherProperty.push_back(name + " " + properties);
    }

    // The first property that differs, and how many more: "VALUE 10K -> 12K and 2 more"; "" if there is none.
    static std::string OtherProperties(const CJOBXcmp& a, const CJOBXcmp& b)
    {
        std::string first;
        std::int64_t count = 0;
        const auto note = [&](const CLProperty& property, const std::string& change)
        {
            if (count++ == 0)
                first = Printable(property.m_sName.View()) + " " + change;
        };
        const auto shown = [](const CString& value)
        { return value.IsEmpty() ? "\"\"" : Printable(ShortenedText(value.View())); };
        NamedDiff::PairUp(
            ListedOf(a.m_arrProperties), ListedOf(b.m_arrProperties),
            [](const CLProperty& property) { return KeyOf(property); },
            [&](const CLProperty& propertyA, const CLProperty& propertyB)
            {
                if (propertyA.m_sValue != propertyB.m_sValue)
                    note(propertyA, shown(propertyA.m_sValue) + " -> " + shown(propertyB.m_sValue));
            },
            [&](const Listed<CLProperty>& each, DiffChange change)
            { note(*each.record, change == DiffChange::OnlyInA ? "removed" : "added"); });
        return count > 1 ? first + " and " + std::to_string(count - 1) + " more" : first;
    }

    void MovedPins(NetChanges& nets, const CJOBXcmp& a, const FileView& viewA, const CJOBXcmp& b,
                   const FileView& viewB) const
    {
        std::unordered_map<std::string, std::string> before;
        for (const CJOBXcmpTop& toeprint : a.m_arrTops.Records())
            before.try_emplace(viewA.step->Pin(a.m_nPkgRef, toeprint.m_nPin), viewA.step->Net(toeprint.m_nNet));
        for (const CJOBXcmpTop& toeprint : b.m_arrTops.Records())
        {
            const std::string pin = viewB.step->Pin(b.m_nPkgRef, toeprint.m_nPin);
            const std::string net = viewB.step->Net(toeprint.m_nNet);
            if (const auto found = before.find(pin); found != before.end() && found->second != net)
                nets.movedPins.push_back(Printable(a.m_sName.View()) + "." + Printable(pin) + " from " +
                                         Printable(found->second) + " to " + Printable(net));
        }
    }

    // The names that only one list has, each as often as it has more of them.
    template <class Record>
    static void OnlyNames(const std::vector<Listed<Record>>& a, const std::vector<Listed<Record>>& b,
                          std::vector<std::string>& onlyA, std::vector<std::string>& onlyB)
    {
        std::unordered_map<std::string_view, std::int64_t> surplus;
        for (const Listed<Record>& each : a)
            ++surplus[each.record->m_sName.View()];
        for (const Listed<Record>& each : b)
            if (std::int64_t& count = surplus[each.record->m_sName.View()]; count-- <= 0)
                onlyB.push_back(Printable(each.record->m_sName.View()));
        for (const Listed<Record>& each : a)
            if (std::int64_t& count = surplus[each.record->m_sName.View()]; count > 0)
            {
                onlyA.push_back(Printable(each.record->m_sName.View()));
                --count;
            }
    }

    void Eda(StepChanges& changes, const StepView& a, const StepView& b)
    {
        const CJOBXdata& dataA = *a.step.GetEda()->m_pData;
        const CJOBXdata& dataB = *b.step.GetEda()->m_pData;
        const FileView viewA = a.Of(dataA.dGetFactorToMM(), nullptr, false);
        const FileView viewB = b.Of(dataB.dGetFactorToMM(), nullptr, false);
        if (Wants(DiffPart::Packages))
            m_diff.Lists(dataA.m_arrPkgs, viewA, dataB.m_arrPkgs, viewB);
        if (!Wants(DiffPart::Nets))
            return;
        OnlyNames(ListedOf(dataA.m_arrNets), ListedOf(dataB.m_arrNets), changes.nets.removed, changes.nets.added);
        m_diff.ScopedPairs(
            ListedOf(dataA.m_arrNets), ListedOf(dataB.m_arrNets),
            [](const CJOBXdataNet& net) { return std::string(net.m_sName.View()); },
            [&](const CJOBXdataNet& netA, const CJOBXdataNet& netB)
            {
                m_progress.Did(CountNetFeatures(netA));
                m_diff.Fields(netA, viewA, netB, viewB);
                NetFeatures(netA, viewA, netB, viewB);
            });
        m_diff.Lists(*dataA.GetFeatureGroups(), viewA, *dataB.GetFeatureGroups(), viewB);
        m_diff.Lists(dataA.m_arrProperties, viewA, dataB.m_arrProperties, viewB);
        if (dataA.m_sHeader != dataB.m_sHeader)
            m_collector.Add("eda", DiffChange::Changed, "header", dataA.m_sHeader.View(), dataB.m_sHeader.View());
    }

    // The features that both jobs have and that belong to this net in one of them only.
    void NetFeatures(const CJOBXdataNet& a, const FileView& viewA, const CJOBXdataNet& b, const FileView& viewB)
    {
        const MeaningMatch match = MatchMeanings(FeaturesOf(a, viewA), FeaturesOf(b, viewB), 0.0);
        const std::int64_t onlyA = CountOnly(match.a);
        const std::int64_t onlyB = CountOnly(match.b);
        if (onlyA + onlyB > 0)
            m_collector.Add("net", DiffChange::Changed, "features that the other has not", onlyA, onlyB);
    }

    static std::vector<Meaning> FeaturesOf(const CJOBXdataNet& net, const FileView& view)
    {
        std::vector<Meaning> features;
        for (const CJOBXSnt& subnet : net.m_arrSnts.Records())
            for (const CJOBXdataNetObj& object : subnet.m_arrNetObjs.Records())
                if (const std::string number =
                        view.NumberOf(view.step->Layer(object.m_nLayerIndex), object.m_nFeatureIndex);
                    !number.empty())
                    AddMeaning(features.emplace_back(), object, view);
        return features;
    }

    void Netlists(const std::string& place, const StepView& a, const StepView& b)
    {
        const auto compare = [&](const CJOBXnetlist& netlistA, const CJOBXnetlist& netlistB)
        {
            m_diff.Fields(netlistA, a.Of(netlistA.dGetFactorToMM(), nullptr, true), netlistB,
                          b.Of(netlistB.dGetFactorToMM(), nullptr, true));
        };
        At(place + " / netlist", [&] { compare(*a.step.GetNetlist(), *b.step.GetNetlist()); });
        At(place,
           [&]
           {
               m_diff.ScopedPairs(
                   ListedOf(jobx::FurtherNetlists()(a.step)), ListedOf(jobx::FurtherNetlists()(b.step)),
                   [](const CJOBXnetlist& netlist) { return FoldedName(netlist.GetName().View()); }, compare);
           });
    }

    std::vector<std::string> OtherFiles(const std::string& pathA, const std::string& pathB)
    {
        std::vector<std::string> different;
        const auto& filesA = *m_a.m_pMisc->GetCarriedFiles();
        const auto& filesB = *m_b.m_pMisc->GetCarriedFiles();
        m_diff.ScopedPairs(
            ListedOf(filesA), ListedOf(filesB),
            [](const CJOBXcarriedFile& file) { return std::string(file.GetPath().View()); },
            [&](const CJOBXcarriedFile& a, const CJOBXcarriedFile& b)
            {
                if (AreSameBytes(pathA, a, pathB, b))
                    return;
                if (a.GetSize() != b.GetSize())
                    m_diff.Fields(a, FileView{}, b, FileView{});
                else
                    m_collector.Add("file", DiffChange::Changed, "bytes");
                different.push_back(Printable(a.GetPath().View()));
            });
        return different;
    }

    DiffCollector& m_collector;
    const MeaningRules& m_rules;
    NamedDiff m_diff;
    const CJOBX& m_a;
    const CJOBX& m_b;
    UserSymbolNames m_symbolsA;
    UserSymbolNames m_symbolsB;
    FeatureAreas m_areasA;
    FeatureAreas m_areasB;
    JobChanges m_changes;
    CountedProgress m_progress;
};
} // namespace

JobChanges CompareMeanings(DiffCollector& collector, const ReadJob& a, const ReadJob& b, const std::string& pathA,
                           const std::string& pathB, const MeaningRules& rules)
{
    return MeaningComparison(collector, rules, *a.job, *b.job).Jobs(pathA, pathB);
}
