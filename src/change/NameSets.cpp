#include "change/NameSets.h"

#include "components/CJOBXcomponents.h"
#include "job/CJOBX.h"
#include "job/CJOBXmatrix.h"
#include "job/CJOBXsteps.h"
#include "layer/CJOBXlayer.h"
#include "step/CJOBXstepObj.h"

NameSet StepsOf(const CJOBX& job)
{
    NameSet names;
    for (const CJOBXmatrixStep& row : job.m_pMatrix->m_arrSteps.Records())
        names.insert(row.m_sName);
    for (const CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
        names.insert(step.m_sName);
    names.erase(CString());
    return names;
}

NameSet LayersOf(const CJOBX& job)
{
    NameSet names;
    for (const CJOBXmatrixLayer& row : job.m_pMatrix->m_arrLayers.Records())
        names.insert(row.m_sName);
    for (const CJOBXstepObj& step : job.m_pSteps->m_arrSteps.Records())
    {
        for (const CJOBXlayer& layer : step.m_arrLayers.Records())
            names.insert(layer.m_sName);
        for (const CJOBXcomponents& file : step.m_arrComponents.Records())
            names.insert(file.m_sLayerName);
    }
    names.erase(CString());
    return names;
}
