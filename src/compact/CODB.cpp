#include "compact/CODB.h"

#include "compact/NewCopy.h"

#include <cmath>
#include <limits>
#include <string_view>

namespace
{
constexpr double kMmInOneInch = 25.4;
constexpr double kInchesInOneMil = 0.001;

// Gives the part the factor of its unit. True if the part's lengths need rescaling by it.
template <class Part>
bool TakesFactor(Part& part)
{
    part.m_dRescaleFactor = CODB::GetRescaleFactor(part.m_sUnits);
    return std::abs(part.m_dRescaleFactor - 1.0) > std::numeric_limits<double>::min();
}

void ChangeUnit(CODBlayer* layer)
{
    if (layer != nullptr && TakesFactor(*layer))
        layer->vRescale();
}

template <class Part>
void ChangeUnit(Part* part)
{
    if (part != nullptr && TakesFactor(*part))
        part->vRescale(part->m_dRescaleFactor);
}

bool Contains(const CString& text, std::string_view piece)
{
    return text.View().find(piece) != std::string_view::npos;
}
} // namespace

CODB::CODB() : m_pComponents(MakeNew<CODBcomponents>()), m_pData(MakeNew<CODBdata>()) {}

CODB::CODB(const CODB& other) = default;

CODB& CODB::operator=(const CODB& other) = default;

CODB::~CODB() = default;

CODB* CODB::clone() const
{
    return NewCopy(*this);
}

int CODB::IsSourceFromNoInformation() const
{
    return m_sSource.IsEmpty() ? 1 : 0;
}

int CODB::IsSourceFromExpeditionPCB() const
{
    return m_sSource == "Expedition PCB" || Contains(m_sSource, "Xpedition") ? 1 : 0;
}

int CODB::IsSourceFromCR8000DESIGNFORCE() const
{
    return m_sSource == "ZUKEN CR-8000 Design Force" || Contains(m_sSource, "CR-8000") ? 1 : 0;
}

int CODB::nChgSUnit2Int(const CString& unit)
{
    if (unit == "MM")
        return 0;
    return unit == "MIL" ? 2 : 1;
}

double CODB::GetRescaleFactor(const CString& unit)
{
    if (unit == "MM")
        return 1.0 / kMmInOneInch;
    return unit == "MIL" ? kInchesInOneMil : 1.0;
}

void CODB::vChangeUnit(int /*unit*/)
{
    for (__int64 i = 0; i < m_arrLayers.GetSize(); ++i)
        ChangeUnit(m_arrLayers.GetAt(i));
    ChangeUnit(m_pSingleLayer.get());
    ChangeUnit(m_pComponents.get());
    for (CODBSpecialSymbol& symbol : m_arrSpecialSymbols.Records())
        TakesFactor(symbol);
    ChangeUnit(m_pData.get());
}

CODBlayer* CODB::pGetODBlayerFromName(const CString& name) const
{
    for (CODBlayer& layer : m_arrLayers.Records())
        if (layer.m_sName == name)
            return &layer;
    return nullptr;
}
