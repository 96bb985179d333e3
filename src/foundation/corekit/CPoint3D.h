#pragma once

#include "foundation/base/CExPtrArray.h"
#include "foundation/corekit/CValueArray.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/JobxExport.h"

// A point in space, in double precision.
// Units:     the unit of its file, inch or millimetre.
// Ownership: a plain value.
class JOBX_API CPoint3D : public CRaisingNew
{
public:
    CPoint3D() = default;
    // A point at these coordinates.
    CPoint3D(double newX, double newY, double newZ) : x(newX), y(newY), z(newZ) {}
    CPoint3D(const CPoint3D&) = default;
    CPoint3D& operator=(const CPoint3D&) = default;
    virtual ~CPoint3D();
    virtual CPoint3D* clone() const; // the caller owns the copy

    // Exact, without tolerance; a point always equals itself.
    bool operator==(const CPoint3D& other) const
    {
        return this == &other || (x == other.x && y == other.y && z == other.z);
    }

    // Get or set all three coordinates.
    void GetData(double& valueX, double& valueY, double& valueZ) const
    {
        valueX = x;
        valueY = y;
        valueZ = z;
    }
    void SetData(double newX, double newY, double newZ)
    {
        x = newX;
        y = newY;
        z = newZ;
    }
    // Get or set the third coordinate.
    double GetZ() const { return z; }
    void SetZ(double newZ) { z = newZ; }

    // The coordinates.
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

extern template class JOBX_API CExPtrArray<CPoint3D*, CPoint3D*>;
extern template class JOBX_API CArray<CPoint3D, const CPoint3D&>;
extern template class JOBX_API CValueArray<CPoint3D>;

// A list of points in space, by value.
class JOBX_API CArrayPoint3D : public CValueArray<CPoint3D>
{
public:
    CArrayPoint3D() = default;
    CArrayPoint3D(const CArrayPoint3D&) = default;
    CArrayPoint3D(CArrayPoint3D&&) noexcept = default;
    CArrayPoint3D& operator=(const CArrayPoint3D&) = default;
    CArrayPoint3D& operator=(CArrayPoint3D&&) noexcept = default;
    ~CArrayPoint3D() override;
    virtual CArrayPoint3D* clone() const; // the caller owns the copy

    // True if the elements differ.
    bool operator!=(const CArrayPoint3D& other) const;
};
