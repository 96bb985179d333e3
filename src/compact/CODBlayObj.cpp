#include "compact/CODBlayObj.h"

#include "compact/NewCopy.h"
#include "compact/RescaleLengths.h"

template class CExPtrArray<CODBlayObjSurfaceOB*, CODBlayObjSurfaceOB*>;
template class CExPtrArray<CODBlayObj*, CODBlayObj*>;

CODBlayObj::~CODBlayObj() = default;

CODBlayObj* CODBlayObj::clone() const
{
    return NewCopy(*this);
}

void CODBlayObj::vRescale(double /*factor*/) {}

CODBlayObjLine::CODBlayObjLine()
{
    m_sType = "L";
}

CODBlayObjLine::~CODBlayObjLine() = default;

CODBlayObjLine* CODBlayObjLine::clone() const
{
    return NewCopy(*this);
}

void CODBlayObjLine::vRescale(double factor)
{
    jobx::RescaleLengths(*this, factor);
}

CODBlayObjPad::CODBlayObjPad()
{
    m_sType = "P";
}

CODBlayObjPad::~CODBlayObjPad() = default;

CODBlayObjPad* CODBlayObjPad::clone() const
{
    return NewCopy(*this);
}

void CODBlayObjPad::vRescale(double factor)
{
    jobx::RescaleLengths(*this, factor);
}

CODBlayObjArc::CODBlayObjArc()
{
    m_sType = "A";
}

CODBlayObjArc::~CODBlayObjArc() = default;

CODBlayObjArc* CODBlayObjArc::clone() const
{
    return NewCopy(*this);
}

void CODBlayObjArc::vRescale(double factor)
{
    jobx::RescaleLengths(*this, factor);
}

CODBlayObjText::CODBlayObjText()
{
    m_sType = "T";
}

CODBlayObjText::~CODBlayObjText() = default;

CODBlayObjText* CODBlayObjText::clone() const
{
    return NewCopy(*this);
}

void CODBlayObjText::vRescale(double factor)
{
    jobx::RescaleLengths(*this, factor);
}

CODBlayObjBarcode::CODBlayObjBarcode()
{
    m_sType = "B";
}

CODBlayObjBarcode::~CODBlayObjBarcode() = default;

CODBlayObjBarcode* CODBlayObjBarcode::clone() const
{
    return NewCopy(*this);
}

void CODBlayObjBarcode::vRescale(double factor)
{
    jobx::RescaleLengths(*this, factor);
}

CODBlayObjSurfaceOB::~CODBlayObjSurfaceOB() = default;

CODBlayObjSurfaceOB* CODBlayObjSurfaceOB::clone() const
{
    return NewCopy(*this);
}

void CODBlayObjSurfaceOB::vRescale(double factor)
{
    jobx::RescaleLengths(*this, factor);
}

CODBlayObjSurfaceOBArray* CODBlayObjSurfaceOBArray::clone() const
{
    return NewCopy(*this);
}

CODBlayObjSurface::CODBlayObjSurface()
{
    m_sType = "S";
}

CODBlayObjSurface::~CODBlayObjSurface() = default;

CODBlayObjSurface* CODBlayObjSurface::clone() const
{
    return NewCopy(*this);
}

void CODBlayObjSurface::vRescale(double factor)
{
    jobx::RescaleLengths(*this, factor);
}

CODBlayObjArray* CODBlayObjArray::clone() const
{
    return NewCopy(*this);
}
