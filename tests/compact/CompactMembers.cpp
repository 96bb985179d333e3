#include "compact/CompactMembers.h"

void Visit(MemberVisitor& v, CODBnetArray& list)
{
    Visit<CODBnet>(v, list);
    v.Plain(list.m_sUnits);
}

void Visit(MemberVisitor& v, CODB& x)
{
    v.Plain(x.m_sSource);
    Visit(v, x.m_arrSpecialSymbols);
    Visit(v, x.m_arrLayers);
    if (v.Fills() && x.m_pSingleLayer == nullptr)
        x.m_pSingleLayer.reset(new CODBlayer);
    v.Integer(x.m_pSingleLayer == nullptr ? 0 : 1);
    if (x.m_pSingleLayer != nullptr)
        Visit(v, *x.m_pSingleLayer);
    v.Integer(x.m_pComponents == nullptr ? 0 : 1);
    if (x.m_pComponents != nullptr)
        Visit(v, *x.m_pComponents);
    v.Integer(x.m_pData == nullptr ? 0 : 1);
    if (x.m_pData != nullptr)
        Visit(v, *x.m_pData);
    v.Fixed([&] { Visit(v, x.m_netlist); });
    Visit(v, x.m_matrix);
    v.Fixed([&] { Visit(v, x.m_arrStephdrs); });
    Visit(v, x.m_arrSysAttrs);
}
