#include "edit/EditedKind.h"

#include "model/Attributes.h"
#include "options/CommonOptions.h"
#include "output/NearestName.h"
#include "output/Text.h"

#include <fmt/core.h>

#include <algorithm>

namespace
{
// Names of attributes are compared without letter case.
template <class List>
void DeleteNamedProperty(const ChangeText& change, List& list, const std::string& name)
{
    auto* const property = FindNamed(list, name.c_str());
    if (property == nullptr)
    {
        std::vector<std::string> names;
        for (const auto& each : list.Records())
            names.emplace_back(each.m_sName.View());
        RefuseChange(change, fmt::format("there is no \"{}\"{}", Printable(name), DidYouMean(name, names)));
    }
    list.Delete(property);
}
} // namespace

bool EditedKind::IsMember(std::string_view member) const
{
    const auto isIt = [&](const std::string& word) { return word == member; };
    const auto isOfIt = [&](const std::string& group)
    { return member.size() > group.size() + 1 && member.starts_with(group) && member[group.size()] == '.'; };
    return std::any_of(m_members.begin(), m_members.end(), isIt) ||
           std::any_of(m_groups.begin(), m_groups.end(), isOfIt);
}

std::vector<std::unique_ptr<EditedKind>> KindsOf(CJOBX& job)
{
    std::vector<std::unique_ptr<EditedKind>> kinds;
    kinds.push_back(MakeComponentKind(job));
    kinds.push_back(MakeNetKind(job));
    kinds.push_back(MakeLayerKind(job));
    kinds.push_back(MakeStepKind(job));
    kinds.push_back(MakePackageKind(job));
    kinds.push_back(MakeFeaturesKind(job));
    kinds.push_back(MakeJobKind(job));
    return kinds;
}

std::pair<std::string, std::string> PartsOfMember(const std::string& member)
{
    const std::size_t dot = member.find('.');
    if (dot == std::string::npos)
        return {member, {}};
    return {member.substr(0, dot), member.substr(dot + 1)};
}

std::vector<CJOBXstepObj*> StepsFor(const CJOBX& job, std::string& name)
{
    std::vector<CJOBXstepObj*> all;
    for (CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
        all.push_back(&step);
    const std::size_t slash = name.find('/');
    if (slash == std::string::npos)
        return all;
    for (CJOBXstepObj* const step : all)
        if (step->m_sName.CompareNoCase(name.substr(0, slash).c_str()) == 0)
        {
            name = name.substr(slash + 1);
            return {step};
        }
    return all;
}

double NumberFor(const ChangeText& change, const std::string& member)
{
    const std::optional<double> number = NumberIn(change.value);
    if (!number)
        RefuseChange(change, fmt::format("{} needs a number, not \"{}\"", member, Printable(change.value)));
    return *number;
}

void CheckDone(const ChangeText& change, const CJOBXresult& result)
{
    if (!result.IsDone())
        RefuseChange(change, Printable(result.GetReason().View()));
}

void CheckField(const ChangeText& change, const std::string& member)
{
    if (change.value.empty() || change.value.find_first_of(" \t;") != std::string::npos)
        RefuseChange(change, fmt::format("{} needs a text without blanks and \";\"", member));
}

void SetProperty(CJOBXPropertyArray& list, const std::string& name, const std::string& value)
{
    CJOBXProperty* property = FindNamed(list, name.c_str());
    if (property == nullptr)
    {
        property = list.Own(std::make_unique<CJOBXProperty>());
        property->m_sName = name.c_str();
    }
    property->m_sValue = value.c_str();
    property->m_nTextNumber = -1;
    property->m_arrFurtherValues.RemoveAll();
}

void SetProperty(CLPropertyArray& list, const std::string& name, const std::string& value)
{
    CLProperty* property = FindNamed(list, name.c_str());
    if (property == nullptr)
        property = list.Own(std::make_unique<CLProperty>(name.c_str(), ""));
    property->m_sValue = value.c_str();
}

void DeleteProperty(const ChangeText& change, CJOBXPropertyArray& list, const std::string& name)
{
    DeleteNamedProperty(change, list, name);
}

void DeleteProperty(const ChangeText& change, CLPropertyArray& list, const std::string& name)
{
    DeleteNamedProperty(change, list, name);
}
