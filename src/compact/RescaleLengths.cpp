#include "compact/RescaleLengths.h"

#include "compact/CompactFields.h"

template <class Compact>
void jobx::RescaleLengths(Compact& record, double factor)
{
    ForEachCompactField<Compact>(
        [&](auto field)
        {
            auto& member = field.Ref(record);
            if constexpr (field.IsScaled() && field.Kind() == FieldKind::Length)
                member *= factor;
            else if constexpr (field.IsScaled())
                member.ReScale(factor);
            else if constexpr (requires { member.vRescale(factor); })
                member.vRescale(factor);
        });
}

template void jobx::RescaleLengths(CODBcmp&, double);
template void jobx::RescaleLengths(CODBcmpToe&, double);
template void jobx::RescaleLengths(CODBcomponents&, double);
template void jobx::RescaleLengths(CODBdata&, double);
template void jobx::RescaleLengths(CODBdataPkg&, double);
template void jobx::RescaleLengths(CODBdataPkgObjCircle&, double);
template void jobx::RescaleLengths(CODBdataPkgObjContour&, double);
template void jobx::RescaleLengths(CODBdataPkgObjRectangle&, double);
template void jobx::RescaleLengths(CODBdataPkgObjSquare&, double);
template void jobx::RescaleLengths(CODBdataPkgPin&, double);
template void jobx::RescaleLengths(CODBlayObjArc&, double);
template void jobx::RescaleLengths(CODBlayObjBarcode&, double);
template void jobx::RescaleLengths(CODBlayObjLine&, double);
template void jobx::RescaleLengths(CODBlayObjOX&, double);
template void jobx::RescaleLengths(CODBlayObjPad&, double);
template void jobx::RescaleLengths(CODBlayObjSurface&, double);
template void jobx::RescaleLengths(CODBlayObjSurfaceOB&, double);
template void jobx::RescaleLengths(CODBlayObjText&, double);
template void jobx::RescaleLengths(CODBnet&, double);
template void jobx::RescaleLengths(CODBnetPt&, double);
template void jobx::RescaleLengths(CODBnetlist&, double);
template void jobx::RescaleLengths(CODBstepRepeat&, double);
template void jobx::RescaleLengths(CODBstephdr&, double);
