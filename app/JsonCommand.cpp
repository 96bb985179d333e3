#include "JsonCommand.h"

#include "ExitError.h"
#include "LayerJson.h"
#include "Sorted.h"
#include "StepJson.h"

namespace
{
void WriteStroke(JsonOutput& json, const CJOBXfontsStandardObj& stroke)
{
    json.Object(
        [&]
        {
            json.Member("start", stroke.m_ptStart);
            json.Member("end", stroke.m_ptEnd);
            json.Member("polarity", stroke.m_sPolarity);
            json.Member("shape", stroke.m_sShape);
            json.Member("width", stroke.m_dWidth);
        });
}

void WriteFont(JsonOutput& json, const CJOBXfonts& font)
{
    json.Object(
        [&]
        {
            json.Member("xSize", font.m_dXSize);
            json.Member("ySize", font.m_dYSize);
            json.Member("offset", font.m_dOffset);
            json.Records("characters", font.m_arrCharacters,
                         [&](const CJOBXfontsStandard& character)
                         {
                             json.Object(
                                 [&]
                                 {
                                     json.Member("name", character.m_sName);
                                     json.Records("strokes", character.m_arrStrokes,
                                                  [&](const CJOBXfontsStandardObj& stroke)
                                                  { WriteStroke(json, stroke); });
                                 });
                         });
        });
}

void WriteMatrixLayer(JsonOutput& json, const CJOBXmatrixLayer& layer)
{
    json.Object(
        [&]
        {
            json.Member("endName", layer.m_sEndName);
            json.Member("startName", layer.m_sStartName);
            json.Member("polarity", layer.m_sPolarity);
            json.Member("name", layer.m_sName);
            json.Member("type", layer.m_sType);
            json.Member("context", layer.m_sContext);
            json.Member("addType", layer.m_sAddType);
            json.Member("oldName", layer.m_sOldName);
            json.Member("color", layer.m_sColor);
            json.Member("row", layer.m_nRow);
        });
}

void WriteMatrix(JsonOutput& json, const CJOBXmatrix& matrix)
{
    json.Object(
        [&]
        {
            json.Records("steps", matrix.m_arrSteps,
                         [&](const CJOBXmatrixStep& step)
                         {
                             json.Object(
                                 [&]
                                 {
                                     json.Member("column", step.m_nColumn);
                                     json.Member("name", step.m_sName);
                                 });
                         });
            json.Records("layers", matrix.m_arrLayers,
                         [&](const CJOBXmatrixLayer& layer) { WriteMatrixLayer(json, layer); });
        });
}

void WriteMisc(JsonOutput& json, const CJOBXmisc& misc)
{
    json.Object(
        [&]
        {
            json.Member("versionMajor", misc.m_nODBVersionMajor);
            json.Member("versionMinor", misc.m_nODBVersionMinor);
            json.Member("jobName", misc.m_sJobName);
            json.Member("source", misc.m_sODBSource);
            json.Member("creationDate", misc.m_sCreationDate);
            json.Member("saveDate", misc.m_sSaveDate);
            json.Member("saveApp", misc.m_sSaveApp);
            json.Member("saveUser", misc.m_sSaveUser);
        });
}

void WriteSymbol(JsonOutput& json, const CJOBXSpecialSymbol& symbol)
{
    json.Object(
        [&]
        {
            json.Member("texts", symbol.m_arrTexts);
            json.Member("name", symbol.m_sName);
            json.Member("path", symbol.m_sPath);
            json.Key("layer");
            WriteLayer(json, *symbol.GetLayer());
        });
}

void WriteJob(JsonOutput& json, const CJOBX& job, int result)
{
    json.Object(
        [&]
        {
            json.Member("result", result);
            json.Member("versionMajor", job.m_nVersionMajor);
            json.Member("versionMinor", job.m_nVersionMinor);
            json.Member("name", job.m_sName);
            json.Key("font");
            WriteFont(json, *job.m_pFonts);
            json.Key("matrix");
            WriteMatrix(json, *job.m_pMatrix);
            json.Key("misc");
            WriteMisc(json, *job.m_pMisc);
            json.Records("steps", job.m_pSteps->m_arrSteps, [&](const CJOBXstepObj& step) { WriteStep(json, step); });
            json.ArrayMember("symbols",
                             [&]
                             {
                                 for (const CJOBXSpecialSymbol* const symbol : SortedRecords<CJOBXSpecialSymbol>(
                                          *job.m_pSpecialSymbols,
                                          [](const CJOBXSpecialSymbol& each) { return each.m_sPath.View(); }))
                                     WriteSymbol(json, *symbol);
                             });
            json.Records("sysAttrs", *job.m_pSysAttrs,
                         [&](const CJOBXsysAttrData& attribute)
                         {
                             json.Object(
                                 [&]
                                 {
                                     json.Member("options", attribute.m_arrOptions);
                                     json.Member("name", attribute.m_sName);
                                 });
                         });
        });
}
} // namespace

void RunJson(const ReadOptions& options, TextBytes textBytes)
{
    const ReadJob read = ReadJobDirectory(options);
    Output output;
    JsonOutput json(output, textBytes);
    WriteJob(json, *read.job, read.result);
    json.Finish();
    if (read.result == 0)
        throw ExitError(ExitCode::UnreadableInput, read.problem);
}
