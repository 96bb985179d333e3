#include "compact/CODBlayObj.h"

#include "compact/NewCopy.h"

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
    m_ptEnd.ReScale(factor);
    m_ptStart.ReScale(factor);
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
    m_ptCenter.ReScale(factor);
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
    m_ptCenter.ReScale(factor);
    m_ptEnd.ReScale(factor);
    m_ptStart.ReScale(factor);
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
    m_dWidthFactor *= factor;
    m_ptSize.ReScale(factor);
    m_ptPosition.ReScale(factor);
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
    m_dHeight *= factor;
    m_dWidth *= factor;
    m_ptPosition.ReScale(factor);
}

CODBlayObjSurfaceOB::~CODBlayObjSurfaceOB() = default;

CODBlayObjSurfaceOB* CODBlayObjSurfaceOB::clone() const
{
    return NewCopy(*this);
}

void CODBlayObjSurfaceOB::vRescale(double factor)
{
    m_arrElements.vRescale(factor);
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
    m_arrContours.vRescale(factor);
}

CODBlayObjArray* CODBlayObjArray::clone() const
{
    return NewCopy(*this);
}
