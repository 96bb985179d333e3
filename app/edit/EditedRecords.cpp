// Components, nets and packages: records that a step has by name.
#include "edit/EditedKind.h"
#include "output/NearestName.h"
#include "output/Text.h"

#include <fmt/core.h>

#include <algorithm>
#include <functional>

namespace
{
template <class Record, class Place>
class KindOfStep : public EditedKind
{
public:
    std::vector<std::string> Names() const override
    {
        std::vector<std::string> names;
        for (CJOBXstepObj& step : Job().m_pSteps->m_arrSteps.Records())
            ForEach(step, [&](const Record& record, const Place&) { names.emplace_back(record.m_sName.View()); });
        return names;
    }
    bool Has(const std::string& name) const override { return !Find(name).empty(); }

protected:
    using EditedKind::EditedKind;
    struct Found
    {
        CJOBXstepObj* step;
        Record* record;
        Place place;
    };

    // Calls `use` with each record of the step and its place.
    virtual void ForEach(CJOBXstepObj& step, const std::function<void(Record&, const Place&)>& use) const = 0;

    // The one record of that name.
    Found FindOne(const ChangeText& change, const std::string& name) const
    {
        const std::vector<Found> found = Find(name);
        if (found.size() == 1)
            return found.front();
        if (std::all_of(found.begin(), found.end(), [&](const Found& each) { return each.step == found[0].step; }))
            RefuseChange(change, fmt::format("there are {} of the name \"{}\"", found.size(), Printable(name)));
        std::string steps;
        for (const Found& each : found)
            steps += fmt::format("{}\"{}\"", steps.empty() ? "" : ", ", Printable(each.step->m_sName.View()));
        RefuseChange(change,
                     fmt::format("\"{}\" is in the steps {}; put the step in front, as in {}/{}", Printable(name),
                                 steps, Printable(found[0].step->m_sName.View()), Printable(name)));
    }
    // Raises ExitError if another record of the step has the new name.
    void CheckNewName(const ChangeText& change, const Found& found) const
    {
        CheckField(change, "name");
        ForEach(*found.step,
                [&](const Record& record, const Place&)
                {
                    if (&record != found.record && record.m_sName == change.value.c_str())
                        RefuseChange(change, fmt::format("the step has another \"{}\"", Printable(change.value)));
                });
    }

private:
    std::vector<Found> FindIn(const std::vector<CJOBXstepObj*>& steps, const std::string& name) const
    {
        std::vector<Found> found;
        for (CJOBXstepObj* const step : steps)
            ForEach(*step,
                    [&](Record& record, const Place& place)
                    {
                        if (record.m_sName.View() == name)
                            found.push_back({step, &record, place});
                    });
        return found;
    }
    // A name may have a "/", too.
    std::vector<Found> Find(const std::string& name) const
    {
        std::string rest = name;
        std::vector<CJOBXstepObj*> steps = StepsFor(Job(), rest);
        std::vector<Found> found = FindIn(steps, rest);
        if (!found.empty() || rest == name)
            return found;
        steps.clear();
        for (CJOBXstepObj& step : Job().m_pSteps->m_arrSteps.Records())
            steps.push_back(&step);
        return FindIn(steps, name);
    }
};

// A length that was given in the unit of the step, in the unit of one of its files.
double LengthInFile(double length, const CJOBXstepObj& step, JOBXunit unitOfFile)
{
    const JOBXunit unit = step.GetHeader()->GetUnit();
    return unit == unitOfFile ? length : length * JOBXfactorToMM(unit) / JOBXfactorToMM(unitOfFile);
}

struct PlaceInFile
{
    CJOBXcomponents* file;
    int place;
};

CArrayN OnePlace(int place)
{
    CArrayN places;
    places.Add(place);
    return places;
}

class ComponentKind : public KindOfStep<CJOBXcmp, PlaceInFile>
{
public:
    explicit ComponentKind(CJOBX& job)
        : KindOfStep(job, "comp", "a component", {"name", "part", "rotation", "x", "y", "mirror", "package"},
                     {"prop", "attr"})
    {
    }
    void Set(const ChangeText& change, const std::string& name, const std::string& member) override
    {
        const Found found = FindOne(change, name);
        CJOBXcmp& component = *found.record;
        const auto [group, inGroup] = PartsOfMember(member);
        if (group == "prop")
            SetProperty(component.m_arrProperties, inGroup, change.value);
        else if (group == "attr")
            SetProperty(component.m_arrAttributes, inGroup, change.value);
        else if (member == "name")
            Rename(change, found);
        else if (member == "part")
            SetPart(change, component);
        else if (member == "package")
            SetPackage(change, found);
        else if (member == "mirror")
            SetMirror(change, component);
        else
            SetNumber(change, found, member);
    }
    void Delete(const ChangeText& change, const std::string& name) override
    {
        const Found found = FindOne(change, name);
        DeleteComponents(*found.step, *found.place.file, OnePlace(found.place.place));
    }
    void DeleteMember(const ChangeText& change, const std::string& name, const std::string& member) override
    {
        CJOBXcmp& component = *FindOne(change, name).record;
        const auto [group, inGroup] = PartsOfMember(member);
        if (group == "prop")
            DeleteProperty(change, component.m_arrProperties, inGroup);
        else
            DeleteProperty(change, component.m_arrAttributes, inGroup);
    }

protected:
    void ForEach(CJOBXstepObj& step, const std::function<void(CJOBXcmp&, const PlaceInFile&)>& use) const override
    {
        for (CJOBXcomponents& file : step.m_arrComponents.Records())
            for (int i = 0; i < file.m_arrCmps.GetSize(); ++i)
                if (CJOBXcmp* const component = file.m_arrCmps.GetAt(i))
                    use(*component, {&file, i});
    }

private:
    void Rename(const ChangeText& change, const Found& found) const
    {
        CheckNewName(change, found);
        found.record->m_sName = change.value.c_str();
    }
    static void SetPart(const ChangeText& change, CJOBXcmp& component)
    {
        CheckField(change, "part");
        component.m_sPartName = change.value.c_str();
    }
    static void SetPackage(const ChangeText& change, const Found& found)
    {
        const CJOBXdataPkgArray& packages = found.step->GetEda()->m_pData->m_arrPkgs;
        std::vector<std::string> names;
        for (int i = 0; i < packages.GetSize(); ++i)
        {
            const CJOBXdataPkg* const package = packages.GetAt(i);
            names.emplace_back(package == nullptr ? std::string_view() : package->m_sName.View());
            if (names.back() != change.value)
                continue;
            found.record->m_nPkgRef = i;
            return;
        }
        RefuseChange(change, fmt::format("the step has no package \"{}\"{}", Printable(change.value),
                                         DidYouMean(change.value, names)));
    }
    static void SetMirror(const ChangeText& change, CJOBXcmp& component)
    {
        if (change.value != "yes" && change.value != "no")
            RefuseChange(change, fmt::format("mirror needs \"yes\" or \"no\", not \"{}\"", Printable(change.value)));
        component.m_nMirror = change.value == "yes" ? 1 : 0;
    }
    static void SetNumber(const ChangeText& change, const Found& found, const std::string& member)
    {
        const double number = NumberFor(change, member);
        CJOBXcmp& component = *found.record;
        const double length = LengthInFile(number, *found.step, found.place.file->GetUnit());
        if (member == "rotation")
            component.m_dRotation = number;
        else if (member == "x")
            component.m_ptLocation.SetX(length);
        else
            component.m_ptLocation.SetY(length);
    }
};

class NetKind : public KindOfStep<CJOBXdataNet, int>
{
public:
    explicit NetKind(CJOBX& job) : KindOfStep(job, "net", "a net", {"name"}, {"prop", "attr"}) {}
    void Set(const ChangeText& change, const std::string& name, const std::string& member) override
    {
        const Found found = FindOne(change, name);
        const auto [group, inGroup] = PartsOfMember(member);
        if (group == "prop")
            SetProperty(found.record->m_arrProperties, inGroup, change.value);
        else if (group == "attr")
            SetProperty(*found.record->pMakeTailAttributes(), inGroup, change.value);
        else
            CheckDone(change, RenameNet(*found.step, found.record->m_sName, change.value.c_str()));
    }
    void Delete(const ChangeText& change, const std::string& name) override
    {
        const Found found = FindOne(change, name);
        DeleteNets(*found.step, OnePlace(found.place));
    }
    void DeleteMember(const ChangeText& change, const std::string& name, const std::string& member) override
    {
        CJOBXdataNet& net = *FindOne(change, name).record;
        const auto [group, inGroup] = PartsOfMember(member);
        DeleteProperty(change, group == "prop" ? net.m_arrProperties : *net.pMakeTailAttributes(), inGroup);
    }

protected:
    void ForEach(CJOBXstepObj& step, const std::function<void(CJOBXdataNet&, const int&)>& use) const override
    {
        const CJOBXdataNetArray& nets = step.GetEda()->m_pData->m_arrNets;
        for (int i = 0; i < nets.GetSize(); ++i)
            if (CJOBXdataNet* const net = nets.GetAt(i))
                use(*net, i);
    }
};

class PackageKind : public KindOfStep<CJOBXdataPkg, int>
{
public:
    explicit PackageKind(CJOBX& job) : KindOfStep(job, "package", "a package", {"name", "pitch"}, {"prop", "attr"}) {}
    void Set(const ChangeText& change, const std::string& name, const std::string& member) override
    {
        const Found found = FindOne(change, name);
        const auto [group, inGroup] = PartsOfMember(member);
        if (group == "prop")
            SetProperty(found.record->m_arrProperties, inGroup, change.value);
        else if (group == "attr")
            SetProperty(*found.record->pMakeTailAttributes(), inGroup, change.value);
        else if (member == "name")
        {
            CheckNewName(change, found);
            found.record->m_sName = change.value.c_str();
        }
        else
            SetPitch(change, found);
    }
    void Delete(const ChangeText& change, const std::string& /*name*/) override
    {
        RefuseChange(change, "packages cannot be deleted, because components refer to them");
    }
    void DeleteMember(const ChangeText& change, const std::string& name, const std::string& member) override
    {
        CJOBXdataPkg& package = *FindOne(change, name).record;
        const auto [group, inGroup] = PartsOfMember(member);
        DeleteProperty(change, group == "prop" ? package.m_arrProperties : *package.pMakeTailAttributes(), inGroup);
    }

protected:
    void ForEach(CJOBXstepObj& step, const std::function<void(CJOBXdataPkg&, const int&)>& use) const override
    {
        const CJOBXdataPkgArray& packages = step.GetEda()->m_pData->m_arrPkgs;
        for (int i = 0; i < packages.GetSize(); ++i)
            if (CJOBXdataPkg* const package = packages.GetAt(i))
                use(*package, i);
    }

private:
    static void SetPitch(const ChangeText& change, const Found& found)
    {
        found.record->m_dPitch =
            LengthInFile(NumberFor(change, "pitch"), *found.step, found.step->GetEda()->m_pData->GetUnit());
    }
};
} // namespace

std::unique_ptr<EditedKind> MakeComponentKind(CJOBX& job)
{
    return std::make_unique<ComponentKind>(job);
}

std::unique_ptr<EditedKind> MakeNetKind(CJOBX& job)
{
    return std::make_unique<NetKind>(job);
}

std::unique_ptr<EditedKind> MakePackageKind(CJOBX& job)
{
    return std::make_unique<PackageKind>(job);
}
