#pragma once

#include "foundation/base/CExPtrArray.h"
#include "foundation/corekit/CValueArray.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/JobxExport.h"

// A pair of 32-bit integers: a grid point, or a count in x and in y.
// Ownership: a plain value.
class JOBX_API CPointN : public CRaisingNew
{
public:
    CPointN() = default;
    // A point at these coordinates.
    CPointN(int newX, int newY) : x(newX), y(newY) {}
    CPointN(const CPointN&) = default;
    CPointN& operator=(const CPointN&) = default;
    virtual ~CPointN();

    // Both coordinates are equal.
    bool operator==(const CPointN& other) const { return x == other.x && y == other.y; }

    void Init() { SetData(0, 0); } // back to (0, 0)
    // Sets both coordinates.
    void SetData(int newX, int newY)
    {
        x = newX;
        y = newY;
    }
    // Set or get one coordinate.
    void SetX(int newX) { x = newX; }
    void SetY(int newY) { y = newY; }
    int GetX() const { return x; }
    int GetY() const { return y; }
    void GetX(int& value) const { value = x; }
    void GetY(int& value) const { value = y; }

    // The coordinates.
    int x = 0;
    int y = 0;
};

extern template class JOBX_API CArray<CPointN, const CPointN&>;
extern template class JOBX_API CValueArray<CPointN>;

// A list of integer points, by value.
class JOBX_API CArrayPointN : public CValueArray<CPointN>
{
public:
    CArrayPointN() = default;
    CArrayPointN(const CArrayPointN&) = default;
    CArrayPointN(CArrayPointN&&) noexcept = default;
    CArrayPointN& operator=(const CArrayPointN&) = default;
    CArrayPointN& operator=(CArrayPointN&&) noexcept = default;
    ~CArrayPointN() override;
    virtual CArrayPointN* clone() const; // the caller owns the copy

    // True if the elements differ.
    bool operator!=(const CArrayPointN& other) const;
};

extern template class JOBX_API CExPtrArray<CArrayPointN*, CArrayPointN*>;
extern template class JOBX_API CArray<CArrayPointN, const CArrayPointN&>;
extern template class JOBX_API CValueArray<CArrayPointN>;

// A list of integer point lists, by value.
class JOBX_API CArrayPointN_Array : public CValueArray<CArrayPointN>
{
public:
    CArrayPointN_Array() = default;
    CArrayPointN_Array(const CArrayPointN_Array&) = default;
    CArrayPointN_Array(CArrayPointN_Array&&) noexcept = default;
    CArrayPointN_Array& operator=(const CArrayPointN_Array&) = default;
    CArrayPointN_Array& operator=(CArrayPointN_Array&&) noexcept = default;
    ~CArrayPointN_Array() override;
    virtual CArrayPointN_Array* clone() const; // the caller owns the copy

    // True if the elements differ.
    bool operator!=(const CArrayPointN_Array& other) const;
};
