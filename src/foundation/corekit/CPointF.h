#pragma once

#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/JobxExport.h"

class CArchive;

// A point in single precision.
// Units:     the unit of its file, inch or millimetre.
// Ownership: a plain value.
class JOBX_API CPointF : public CRaisingNew
{
public:
    CPointF() = default;
    // A point at these coordinates.
    CPointF(float newX, float newY) : x(newX), y(newY) {}
    CPointF(const CPointF&) = default;
    CPointF& operator=(const CPointF&) = default;
    virtual ~CPointF();

    // Exact, without tolerance; a point always equals itself.
    bool operator==(const CPointF& other) const { return this == &other || (x == other.x && y == other.y); }

    // Stores or loads x and then y, 32 bits each. A short archive raises CArchiveException.
    virtual void Serialize(CArchive& archive);

    // The coordinates.
    float x = 0.0F;
    float y = 0.0F;
};
