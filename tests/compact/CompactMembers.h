// Walks over every member of every class of the compact model as its list says: what a unit change multiplies is a
// length, what it leaves alone is not. Tests of copies and of rescaling use it.
#pragma once

#include "compact/CompactFields.h"

#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

// Sees the members one by one; lengths may be declared fixed for a stretch (see Fixed).
class MemberVisitor
{
public:
    MemberVisitor() = default;
    MemberVisitor(const MemberVisitor&) = delete;
    MemberVisitor& operator=(const MemberVisitor&) = delete;
    virtual ~MemberVisitor() = default;

    virtual void Real(double& value, bool isLength) = 0;
    virtual void Integer(long long value) = 0; // of what was set by SetInteger, or a count
    virtual void Text(CString& value) = 0;
    virtual bool Fills() const { return false; }
    virtual int NextInteger() { return 0; }

    void Length(double& value) { Real(value, m_fixed == 0); }
    void Length(CPointD& point)
    {
        Length(point.x);
        Length(point.y);
    }
    void Plain(double& value) { Real(value, false); }
    void Plain(CPointD& point)
    {
        Plain(point.x);
        Plain(point.y);
    }
    void Plain(CPointN& point)
    {
        Plain(point.x);
        Plain(point.y);
    }
    void Plain(CString& value) { Text(value); }
    template <class Number>
    requires std::is_integral_v<Number>
    void Plain(Number& value)
    {
        if (Fills())
            value = NextInteger();
        Integer(value);
    }
    void Plain(CStringArray& list)
    {
        FillTo(list, CString());
        for (INT_PTR i = 0; i < list.GetSize(); ++i)
            Text(list[i]);
    }
    void Plain(CArrayN& list)
    {
        FillTo(list, 0);
        for (INT_PTR i = 0; i < list.GetSize(); ++i)
            Plain(list[i]);
    }
    void Plain(CJOBXPropertyArray& list)
    {
        FillNew(list);
        for (INT_PTR i = 0; i < list.GetSize(); ++i)
        {
            CJOBXProperty& property = *list.GetAt(i);
            Plain(property.m_sName);
            Plain(property.m_nNumber);
            Plain(property.m_sValue);
            Plain(property.m_nTextNumber);
            Plain(property.m_arrFurtherValues);
        }
    }
    void Plain(CLPropertyArray& list)
    {
        FillNew(list);
        for (INT_PTR i = 0; i < list.GetSize(); ++i)
        {
            Plain(list.GetAt(i)->m_sName);
            Plain(list.GetAt(i)->m_sValue);
        }
    }
    // Visits what a unit change leaves alone, lengths included.
    template <class Walk>
    void Fixed(Walk walk)
    {
        ++m_fixed;
        walk();
        --m_fixed;
    }
    template <class T>
    void FillNew(CExPtrArray<T*, T*>& list)
    {
        if (Fills() && list.IsEmpty())
        {
            list.Add(new T);
            list.Add(new T);
        }
        Integer(list.GetSize());
    }

private:
    template <class List, class Element>
    void FillTo(List& list, const Element& element)
    {
        if (Fills() && list.IsEmpty())
        {
            list.Add(element);
            list.Add(element);
        }
        Integer(list.GetSize());
    }

    int m_fixed = 0;
};

// Gives every member a value that nothing else has, and every empty list elements.
class Filler : public MemberVisitor
{
public:
    explicit Filler(int first) : m_next(first) {}
    bool Fills() const override { return true; }
    int NextInteger() override { return m_next++; }
    void Real(double& value, bool /*isLength*/) override { value = NextInteger() + 0.25; }
    void Integer(long long /*value*/) override {}
    void Text(CString& value) override { value.Format("a text too long to lie inside %d", NextInteger()); }

private:
    int m_next;
};

// The members of an object: its lengths and, apart from them, everything else.
struct Members
{
    bool operator==(const Members& other) const { return lengths == other.lengths && others == other.others; }

    std::vector<double> lengths;
    std::string others; // a line for each
};

class Recorder : public MemberVisitor
{
public:
    void Real(double& value, bool isLength) override
    {
        if (isLength)
            members.lengths.push_back(value);
        else
            Add(std::to_string(value));
    }
    void Integer(long long value) override { Add(std::to_string(value)); }
    void Text(CString& value) override { Add(value.View()); }

    Members members;

private:
    void Add(std::string_view line) { members.others.append(line).append(1, '\n'); }
};

template <class T>
concept IsListed = requires
{
    jobx::CompactFields<T>::kList;
};

// The class whose list has the members that all classes of a kind have.
template <class T>
using BaseOf = std::conditional_t<std::is_base_of_v<CODBlayObj, T>, CODBlayObj,
                                  std::conditional_t<std::is_base_of_v<CODBdataPkgObj, T>, CODBdataPkgObj, T>>;

template <IsListed T>
void Visit(MemberVisitor& v, T& x);
void Visit(MemberVisitor& v, CODBnetArray& list);
void Visit(MemberVisitor& v, CODB& x);

// An empty list is filled with two elements, or with one of each class that may stand in it.
template <class T>
void FillWithAllClasses(MemberVisitor& v, CExPtrArray<T*, T*>& list)
{
    if constexpr (requires { typename jobx::CompactFields<T>::Classes; })
    {
        if (v.Fills() && list.IsEmpty())
        {
            list.Add(new T);
            jobx::CompactFields<T>::Classes::ForEach([&]<class Class>(Class*) { list.Add(new Class); });
        }
        v.Integer(list.GetSize());
    }
    else
        v.FillNew(list);
}

template <class T>
void Visit(MemberVisitor& v, CCopyableArray<T>& list)
{
    FillWithAllClasses(v, list);
    for (INT_PTR i = 0; i < list.GetSize(); ++i)
        Visit(v, *list.GetAt(i));
}

template <class Field, class T>
void VisitMember(MemberVisitor& v, T& x)
{
    auto& member = Field::Ref(x);
    if constexpr (Field::IsScaled())
        v.Length(member);
    else if constexpr (Field::Kind() == jobx::FieldKind::Part)
        v.Fixed([&] { Visit(v, member); }); // a symbol's layer
    else if constexpr (requires { v.Plain(member); })
        v.Plain(member);
    else
        Visit(v, member);
}

template <class T>
void VisitMembers(MemberVisitor& v, T& x)
{
    jobx::ForEachCompactField<T>([&](auto field) { VisitMember<decltype(field)>(v, x); });
}

template <IsListed T>
void Visit(MemberVisitor& v, T& x)
{
    using Base = BaseOf<T>;
    VisitMembers<Base>(v, x);
    if constexpr (requires { typename jobx::CompactFields<Base>::Classes; })
        jobx::CompactFields<Base>::Classes::Find(static_cast<Base&>(x),
                                                 [&](auto& classed) { VisitMembers(v, classed); });
}

template <class T>
void Fill(T& object, int first = 1)
{
    Filler filler(first);
    Visit(filler, object);
}

// What the object holds, all the way down.
template <class T>
Members MembersOf(T& object)
{
    Recorder recorder;
    Visit(recorder, object);
    return recorder.members;
}
