// Every member of every class of the compact model, told once: what a unit change multiplies is a length, what it
// leaves alone is not. Tests of copies and of rescaling walk it.
#pragma once

#include "compact/CODB.h"

#include <string>
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
    std::vector<std::string> others;
};

class Recorder : public MemberVisitor
{
public:
    void Real(double& value, bool isLength) override
    {
        if (isLength)
            members.lengths.push_back(value);
        else
            members.others.push_back(std::to_string(value));
    }
    void Integer(long long value) override { members.others.push_back(std::to_string(value)); }
    void Text(CString& value) override { members.others.emplace_back(value.View()); }

    Members members;
};

inline void Visit(MemberVisitor& v, CODBdataNetObj& x)
{
    v.Plain(x.m_nFeatureIndex);
    v.Plain(x.m_nLayerIndex);
    v.Plain(x.m_sKind);
    v.Plain(x.m_sText);
    v.Plain(x.m_nLineNumber);
}

inline void Visit(MemberVisitor& v, CODBlayObjOX& x)
{
    v.Plain(x.m_nLineNumber);
    v.Plain(x.m_sClockwise);
    v.Plain(x.m_sPolygonType);
    v.Length(x.m_ptCenter);
    v.Length(x.m_ptPoint);
    v.Plain(x.m_sKind);
}

inline void Visit(MemberVisitor& v, CODBcmpToe& x)
{
    v.Plain(x.m_sName);
    v.Plain(x.m_nNet);
    v.Plain(x.m_nSubnet);
    v.Plain(x.m_nMirror);
    v.Plain(x.m_dRotation);
    v.Length(x.m_ptLocation);
    v.Plain(x.m_nPin);
}

inline void Visit(MemberVisitor& v, CODBnetPt& x)
{
    v.Plain(x.m_sSide);
    v.Plain(x.m_sStaggeredMark);
    v.Plain(x.m_dStaggeredRadius);
    v.Plain(x.m_sExposure);
    v.Plain(x.m_sEndPoint);
    v.Length(x.m_dHeight);
    v.Length(x.m_dWidth);
    v.Length(x.m_ptPosition);
    v.Length(x.m_ptStaggeredPosition);
    v.Length(x.m_dRadius);
    v.Plain(x.m_arrFlags);
}

inline void Visit(MemberVisitor& v, CODBmatrixLayer& x)
{
    v.Plain(x.m_sEndName);
    v.Plain(x.m_sStartName);
    v.Plain(x.m_sPolarity);
    v.Plain(x.m_sName);
    v.Plain(x.m_sType);
    v.Plain(x.m_sContext);
    v.Plain(x.m_sAddType);
    v.Plain(x.m_sOldName);
    v.Plain(x.m_sColor);
    v.Plain(x.m_nRow);
}

inline void Visit(MemberVisitor& v, CODBsysAttrData& x)
{
    v.Plain(x.m_arrOptions);
    v.Plain(x.m_sName);
}

inline void Visit(MemberVisitor& v, CODBstepRepeat& x)
{
    v.Plain(x.m_sName);
    v.Length(x.m_ptPosition);
    v.Length(x.m_ptPitch);
    v.Plain(x.m_ptCount);
    v.Plain(x.m_dAngle);
    v.Plain(x.m_sMirror);
    v.Plain(x.m_sFlip);
}

void Visit(MemberVisitor& v, CODBSnt& x);
void Visit(MemberVisitor& v, CODBdataNet& x);
void Visit(MemberVisitor& v, CODBlayObj& x);
void Visit(MemberVisitor& v, CODBlayObjSurfaceOB& x);
void Visit(MemberVisitor& v, CODBlayer& x);
void Visit(MemberVisitor& v, CODBSpecialSymbol& x);
void Visit(MemberVisitor& v, CODBcmp& x);
void Visit(MemberVisitor& v, CODBcomponents& x);
void Visit(MemberVisitor& v, CODBdataPkgObj& x);
void Visit(MemberVisitor& v, CODBdataPkgPin& x);
void Visit(MemberVisitor& v, CODBdataPkg& x);
void Visit(MemberVisitor& v, CODBdata& x);
void Visit(MemberVisitor& v, CODBnet& x);
void Visit(MemberVisitor& v, CODBnetlist& x);
void Visit(MemberVisitor& v, CODBmatrix& x);
void Visit(MemberVisitor& v, CODBstephdr& x);
void Visit(MemberVisitor& v, CODB& x);

// An empty list is filled with one element of each class that may stand in it.
template <class T>
void FillWithAllClasses(MemberVisitor& v, CExPtrArray<T*, T*>& list)
{
    v.FillNew(list);
}
void FillWithAllClasses(MemberVisitor& v, CExPtrArray<CODBlayObj*, CODBlayObj*>& list);
void FillWithAllClasses(MemberVisitor& v, CExPtrArray<CODBdataPkgObj*, CODBdataPkgObj*>& list);

template <class T>
void Visit(MemberVisitor& v, CCopyableArray<T>& list)
{
    FillWithAllClasses(v, list);
    for (INT_PTR i = 0; i < list.GetSize(); ++i)
        Visit(v, *list.GetAt(i));
}

inline void Visit(MemberVisitor& v, CODBnetArray& list)
{
    Visit<CODBnet>(v, list);
    v.Plain(list.m_sUnits);
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
