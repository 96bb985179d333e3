// Every record of the main model beside the one of the compact model that it becomes, member by member, as the lists say.
// Tests fill the first with it, and compare both.
#pragma once

#include "compact/CompactFields.h"

// `Visit` sees pairs of members as Value<field of the main record>(record, compact member), pairs of lists as
// List(main, compact, walk), where walk is called with each pair of records, and what is in no list as
// operator()(main, compact).
template <class Visit>
class RecordPairs
{
public:
    explicit RecordPairs(Visit& visit) : v(visit) {}

    template <class A, class B>
    void Walk(A& a, B& b)
    {
        WalkMembers(a, b);
        if constexpr (requires { typename jobx::CompactFields<B>::Classes; })
            jobx::CompactFields<B>::Classes::ForEach([&]<class Class>(Class*) { WalkAs<Class>(a, b); });
    }
    void Walk(CJOBXnetlist& a, CODBnetlist& b)
    {
        WalkMembers(a, b);
        v(a.m_arrNets.m_sUnits, b.m_arrNets.m_sUnits);
    }
    // What a job has beside its steps.
    void Walk(CJOBX& a, CODB& b)
    {
        v(a.m_pMisc->m_sODBSource, b.m_sSource);
        List(*a.m_pSpecialSymbols, b.m_arrSpecialSymbols);
        Walk(*a.m_pMatrix, b.m_matrix);
        List(*a.m_pSysAttrs, b.m_arrSysAttrs);
    }
    // What a step has beside its components: their files become one part.
    void Walk(CJOBXstepObj& a, CODB& b, CODBlayer& profile, CODBstephdr& header)
    {
        Walk(*a.GetProfile(), profile);
        List(a.m_arrLayers, b.m_arrLayers);
        Walk(*a.GetEda()->m_pData, *b.m_pData);
        Walk(*a.GetNetlist(), b.m_netlist);
        Walk(*a.GetHeader(), header);
    }
    template <class A, class B>
    void List(CExPtrArray<A*, A*>& a, COwningPtrArray<B>& b)
    {
        v.List(a, b, [this](A& x, B& y) { Walk(x, y); });
    }

private:
    template <class Class, class A, class B>
    void WalkAs(A& a, B& b)
    {
        if (auto* const main = dynamic_cast<typename jobx::CompactFields<Class>::Main*>(&a))
            if (Class* const compact = v.template CompactAs<Class>(b))
                WalkMembers(*main, *compact);
    }
    template <class A, class B>
    void WalkMembers(A& a, B& b)
    {
        jobx::ForEachCompactField<B>(
            [&](auto field)
            {
                if constexpr (!field.kIsOwn)
                    WalkMember<decltype(field.Main())>(a, field.Ref(b));
            });
    }
    template <class Field, class A, class Member>
    void WalkMember(A& a, Member& b)
    {
        constexpr bool kIsProperties =
            std::is_same_v<Member, CJOBXPropertyArray> || std::is_same_v<Member, CLPropertyArray>;
        if constexpr (Field::kKind == jobx::FieldKind::Part)
            Walk(Field::Ref(a), b);
        else if constexpr (Field::kKind == jobx::FieldKind::Records && !kIsProperties)
            List(Field::Ref(a), b);
        else
            v.template Value<Field>(a, b);
    }

    Visit& v;
};
