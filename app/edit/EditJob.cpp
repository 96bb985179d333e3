#include "edit/EditJob.h"

#include "edit/EditedKind.h"
#include "output/NearestName.h"
#include "output/Text.h"

#include <fmt/core.h>

namespace
{
EditedKind& KindNamed(const std::vector<std::unique_ptr<EditedKind>>& kinds, const ChangeText& change)
{
    std::vector<std::string> words;
    for (const auto& kind : kinds)
    {
        if (kind->Word() == change.kind)
            return *kind;
        words.emplace_back(kind->Word());
    }
    RefuseChange(change,
                 fmt::format("there is no kind \"{}\"{}", Printable(change.kind), DidYouMean(change.kind, words)));
}

std::string ShownWithoutArticle(const EditedKind& kind)
{
    const std::string_view shown = kind.Shown();
    return std::string(shown.substr(shown.find(' ') + 1));
}

[[noreturn]] void RefuseName(const ChangeText& change, const EditedKind& kind, const std::string& name)
{
    RefuseChange(change, fmt::format("there is no {} \"{}\"{}", ShownWithoutArticle(kind), Printable(name),
                                     DidYouMean(name, kind.Names())));
}

struct Target
{
    std::string name;
    std::string member;
};

// Names may have dots, so the longest name that fits is taken.
Target FindTarget(const ChangeText& change, const EditedKind& kind)
{
    const std::string& text = change.target;
    if (kind.Word() == "job")
        return {{}, text};
    for (std::size_t dot = text.rfind('.'); dot != std::string::npos && dot > 0; dot = text.rfind('.', dot - 1))
        if (const Target target{text.substr(0, dot), text.substr(dot + 1)};
            kind.IsMember(target.member) && kind.Has(target.name))
            return target;
    return {};
}

// Why there is no target: the name or the member is wrong.
[[noreturn]] void RefuseTarget(const ChangeText& change, const EditedKind& kind)
{
    const std::string& text = change.target;
    if (kind.Has(text))
        RefuseChange(change, "it does not say which member");
    for (std::size_t dot = text.rfind('.'); dot != std::string::npos && dot > 0; dot = text.rfind('.', dot - 1))
        if (kind.Has(text.substr(0, dot)))
        {
            const std::string member = text.substr(dot + 1);
            RefuseChange(change, fmt::format("{} has no \"{}\"{}", kind.Shown(), Printable(member),
                                             DidYouMean(member, kind.Members())));
        }
    RefuseName(change, kind, text.substr(0, text.find('.')));
}

void MakeDeletion(EditedKind& kind, const ChangeText& change)
{
    if (kind.Word() != "job" && kind.Has(change.target))
        return kind.Delete(change, change.target);
    const Target target = FindTarget(change, kind);
    if (!kind.IsMember(target.member))
        RefuseName(change, kind, change.target);
    if (PartsOfMember(target.member).second.empty())
        RefuseChange(change, fmt::format("{} cannot be without \"{}\"", kind.Shown(), target.member));
    kind.DeleteMember(change, target.name, target.member);
}

void MakeSetting(EditedKind& kind, const ChangeText& change)
{
    const Target target = FindTarget(change, kind);
    if (target.member.empty())
        RefuseTarget(change, kind);
    if (!kind.IsMember(target.member))
        RefuseChange(change, fmt::format("{} has no \"{}\"{}", kind.Shown(), Printable(target.member),
                                         DidYouMean(target.member, kind.Members())));
    kind.Set(change, target.name, target.member);
}
} // namespace

void MakeChange(CJOBX& job, const ChangeText& change)
{
    const std::vector<std::unique_ptr<EditedKind>> kinds = KindsOf(job);
    EditedKind& kind = KindNamed(kinds, change);
    if (change.isDeletion)
        MakeDeletion(kind, change);
    else
        MakeSetting(kind, change);
}
