#include "foundation/corekit/CPointF.h"

#include "foundation/framework/CArchive.h"

CPointF::~CPointF() = default;

void CPointF::Serialize(CArchive& archive)
{
    if (archive.IsStoring())
        archive << x << y;
    else
        archive >> x >> y;
}
