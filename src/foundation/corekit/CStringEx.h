#pragma once

#include "foundation/corekit/CValueArray.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/JobxExport.h"

// A text that can be parsed as a number.
// Results:   text that does not begin with a number reads as 0; white space before the number and anything after it is
//            ignored; independent of the locale.
// Ownership: a plain value.
class JOBX_API CStringEx : public CRaisingNew
{
public:
    CStringEx() = default;
    // With that text.
    CStringEx(const CString& text) : m_sText(text) {}
    CStringEx(const char* text) : m_sText(text) {}
    CStringEx(const CStringEx&) = default;
    CStringEx(CStringEx&&) noexcept = default;
    CStringEx& operator=(const CStringEx&) = default;
    CStringEx& operator=(CStringEx&&) noexcept = default;
    virtual ~CStringEx();

    // Case-sensitive.
    bool operator==(const CStringEx& other) const { return m_sText == other.m_sText; }

    const CString& GetText() const { return m_sText; }
    // The decimal number at the start of the text; a real may also be hexadecimal, infinity or nan.
    double ToDouble() const;
    // As an integer; a number outside 32 bits becomes the nearest one inside.
    int ToInteger() const;
    operator int() const { return ToInteger(); }
    operator float() const { return static_cast<float>(ToDouble()); }
    operator double() const { return ToDouble(); }

    CString m_sText;
};

extern template class JOBX_API CArray<CStringEx, const CStringEx&>;
extern template class JOBX_API CValueArray<CStringEx>;

// A list of such texts, by value.
class JOBX_API CStringExArray : public CValueArray<CStringEx>
{
public:
    CStringExArray() = default;
    CStringExArray(const CStringExArray&) = default;
    CStringExArray(CStringExArray&&) noexcept = default;
    CStringExArray& operator=(const CStringExArray&) = default;
    CStringExArray& operator=(CStringExArray&&) noexcept = default;
    ~CStringExArray() override;

    // Whether an element equals `text`, case-sensitive.
    bool bStringInArray(const CString& text) const;
};
