#include "foundation/corekit/CPointD.h"

#include <cmath>
#include <numbers>

template class CArray<CPointD, const CPointD&>;
template class CValueArray<CPointD>;
template class CArray<CArrayPointD, const CArrayPointD&>;
template class CValueArray<CArrayPointD>;
template class CExPtrArray<CArrayPointD*, CArrayPointD*>;

bool CPointD::operator==(const CPointD& other) const
{
    return this == &other || (x == other.x && y == other.y);
}

void CPointD::Rotate(const double& angle)
{
    const double turn = std::fmod(angle, 360.0);
    double cosine = 0.0;
    double sine = 0.0;
    // The sine and cosine of a quarter turn in radians are not exactly 0, so they are not computed.
    if (turn == 0.0)
        cosine = 1.0;
    else if (turn == 90.0 || turn == -270.0)
        sine = 1.0;
    else if (turn == 180.0 || turn == -180.0)
        cosine = -1.0;
    else if (turn == 270.0 || turn == -90.0)
        sine = -1.0;
    else
    {
        const double radians = turn * (std::numbers::pi / 180.0);
        cosine = std::cos(radians);
        sine = std::sin(radians);
    }
    SetData(x * cosine - y * sine, x * sine + y * cosine);
}

CArrayPointD::~CArrayPointD() = default;

CArrayPointD* CArrayPointD::clone() const
{
    return new CArrayPointD(*this);
}

bool CArrayPointD::operator!=(const CArrayPointD& other) const
{
    return !(*this == other);
}

CArrayArrayPointD::~CArrayArrayPointD() = default;

CArrayArrayPointD* CArrayArrayPointD::clone() const
{
    return new CArrayArrayPointD(*this);
}

bool CArrayArrayPointD::operator!=(const CArrayArrayPointD& other) const
{
    return !(*this == other);
}
