#pragma once

#include "foundation/base/CExPtrArray.h"
#include "foundation/corekit/CValueArray.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/JobxExport.h"

// A point or a pair of lengths in double precision.
// Units:     the unit of its file, inch or millimetre; angles in degrees.
// Ownership: a plain value.
class JOBX_API CPointD : public CRaisingNew
{
public:
    CPointD() = default;
    // A point at these coordinates.
    CPointD(double newX, double newY) : x(newX), y(newY) {}
    CPointD(const CPointD&) = default;
    CPointD& operator=(const CPointD&) = default;
    virtual ~CPointD() = default;

    // Exact, without tolerance; a point always equals itself.
    virtual bool operator==(const CPointD& other) const;

    void Init() { SetData(0.0, 0.0); } // back to (0, 0)
    // Sets both coordinates.
    void SetData(double newX, double newY)
    {
        x = newX;
        y = newY;
    }
    // Set or get one coordinate.
    void SetX(double newX) { x = newX; }
    void SetY(double newY) { y = newY; }
    double GetX() const { return x; }
    double GetY() const { return y; }
    void GetX(double& value) const { value = x; }
    void GetY(double& value) const { value = y; }

    // Multiplies both coordinates by `factor`.
    void UnitConvert(const double& factor) { ReScale(factor, factor); }
    void ReScale(const double& factor) { ReScale(factor, factor); }
    // Multiplies x by `factorX` and y by `factorY`; a factor may be a coordinate of this point.
    void ReScale(const double& factorX, const double& factorY) { SetData(x * factorX, y * factorY); }

    // Rotates the point about the origin by `angle` degrees, counter-clockwise if positive. Multiples of 90 are exact.
    void Rotate(const double& angle);

    // The coordinates.
    double x = 0.0;
    double y = 0.0;
};

extern template class JOBX_API CArray<CPointD, const CPointD&>;
extern template class JOBX_API CValueArray<CPointD>;

// A list of points, by value.
class JOBX_API CArrayPointD : public CValueArray<CPointD>
{
public:
    CArrayPointD() = default;
    CArrayPointD(const CArrayPointD&) = default;
    CArrayPointD(CArrayPointD&&) noexcept = default;
    CArrayPointD& operator=(const CArrayPointD&) = default;
    CArrayPointD& operator=(CArrayPointD&&) noexcept = default;
    ~CArrayPointD() override;
    virtual CArrayPointD* clone() const; // the caller owns the copy

    // True if the elements differ.
    bool operator!=(const CArrayPointD& other) const;
};

extern template class JOBX_API CExPtrArray<CArrayPointD*, CArrayPointD*>;
extern template class JOBX_API CArray<CArrayPointD, const CArrayPointD&>;
extern template class JOBX_API CValueArray<CArrayPointD>;

// A list of point lists, by value.
class JOBX_API CArrayArrayPointD : public CValueArray<CArrayPointD>
{
public:
    CArrayArrayPointD() = default;
    CArrayArrayPointD(const CArrayArrayPointD&) = default;
    CArrayArrayPointD(CArrayArrayPointD&&) noexcept = default;
    CArrayArrayPointD& operator=(const CArrayArrayPointD&) = default;
    CArrayArrayPointD& operator=(CArrayArrayPointD&&) noexcept = default;
    ~CArrayArrayPointD() override;
    virtual CArrayArrayPointD* clone() const; // the caller owns the copy

    // True if the elements differ.
    bool operator!=(const CArrayArrayPointD& other) const;
};
