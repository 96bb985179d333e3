#include "compact/CODBdataPkgObj.h"

#include "compact/NewCopy.h"

template class CExPtrArray<CODBdataPkgObj*, CODBdataPkgObj*>;

CODBdataPkgObj::~CODBdataPkgObj() = default;

CODBdataPkgObj* CODBdataPkgObj::clone() const
{
    return NewCopy(*this);
}

void CODBdataPkgObj::vRescale(double /*factor*/) {}

CODBdataPkgObjArray* CODBdataPkgObjArray::clone() const
{
    return NewCopy(*this);
}

CODBdataPkgObjCircle::CODBdataPkgObjCircle()
{
    m_sKeyword = "CR";
}

CODBdataPkgObjCircle::~CODBdataPkgObjCircle() = default;

CODBdataPkgObjCircle* CODBdataPkgObjCircle::clone() const
{
    return NewCopy(*this);
}

void CODBdataPkgObjCircle::vRescale(double factor)
{
    m_ptCenter.ReScale(factor);
    m_dRadius *= factor;
}

CODBdataPkgObjSquare::CODBdataPkgObjSquare()
{
    m_sKeyword = "SQ";
}

CODBdataPkgObjSquare::~CODBdataPkgObjSquare() = default;

CODBdataPkgObjSquare* CODBdataPkgObjSquare::clone() const
{
    return NewCopy(*this);
}

void CODBdataPkgObjSquare::vRescale(double factor)
{
    m_ptCenter.ReScale(factor);
    m_dHalfSide *= factor;
}

CODBdataPkgObjRectangle::CODBdataPkgObjRectangle()
{
    m_sKeyword = "RC";
}

CODBdataPkgObjRectangle::~CODBdataPkgObjRectangle() = default;

CODBdataPkgObjRectangle* CODBdataPkgObjRectangle::clone() const
{
    return NewCopy(*this);
}

void CODBdataPkgObjRectangle::vRescale(double factor)
{
    m_dWidth *= factor;
    m_dHeight *= factor;
    m_ptLowerLeft.ReScale(factor);
}

CODBdataPkgObjContour::CODBdataPkgObjContour()
{
    m_sKeyword = "CT";
}

CODBdataPkgObjContour::~CODBdataPkgObjContour() = default;

CODBdataPkgObjContour* CODBdataPkgObjContour::clone() const
{
    return NewCopy(*this);
}

void CODBdataPkgObjContour::vRescale(double factor)
{
    m_arrElements.vRescale(factor);
}
