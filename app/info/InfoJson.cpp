#include "info/InfoJson.h"

#include "info/BoardJson.h"
#include "json/RecordJson.h"

namespace
{
void WriteLayer(JsonOutput& json, const LayerSummary& layer)
{
    json.Object(
        [&]
        {
            json.Member("name", layer.name);
            json.Member("units", layer.units);
            json.Member("symbols", layer.symbols);
            json.Member("features", layer.features);
            json.ObjectMember("featuresByKind",
                              [&]
                              {
                                  for (std::size_t kind = 0; kind < kFeatureKinds.size(); ++kind)
                                      json.Member(std::string_view(&kFeatureKinds[kind], 1), layer.byKind[kind]);
                              });
            json.Member("contours", layer.contours);
            json.Member("attributeNames", layer.attributeNames);
            json.Member("attributeTexts", layer.attributeTexts);
        });
}

void WriteLayers(JsonOutput& json, std::string_view key, const std::vector<LayerSummary>& layers)
{
    json.ArrayMember(key,
                     [&]
                     {
                         for (const LayerSummary& layer : layers)
                             WriteLayer(json, layer);
                     });
}

void WriteHeader(JsonOutput& json, const CJOBXstephdr& header)
{
    json.Object(
        [&]
        {
            json.Member("datum", header.m_ptDatum);
            json.Member("origin", header.m_ptOrigin);
            json.Records("stepRepeats", header.m_arrStepRepeats,
                         [&](const CJOBXstepRepeat& entry) { WriteRecord(json, entry); });
        });
}

void WriteComponents(JsonOutput& json, const ComponentsSummary& file)
{
    json.Object(
        [&]
        {
            json.Member("layer", file.layerName);
            json.Member("components", file.components);
            json.Member("toeprints", file.toeprints);
            json.Member("properties", file.properties);
            json.Member("attributes", file.attributes);
            json.Member("attributeNames", file.attributeNames);
            json.Member("attributeTexts", file.attributeTexts);
        });
}

void WriteEda(JsonOutput& json, const StepSummary& step)
{
    json.Object(
        [&]
        {
            json.Member("header", step.edaHeader);
            json.Member("layers", step.edaLayers);
            json.Member("nets", step.nets);
            json.ObjectMember("subnets",
                              [&]
                              {
                                  json.Member("TOP", step.subnets.toeprints);
                                  json.Member("VIA", step.subnets.vias);
                                  json.Member("TRC", step.subnets.traces);
                                  json.Member("PLN", step.subnets.planes);
                                  json.Member("other", step.subnets.others);
                              });
            json.Member("netFeatures", step.subnets.features);
            json.Member("packages", step.packages);
            json.Member("pins", step.pins);
        });
}

void WriteStep(JsonOutput& json, const StepSummary& step)
{
    json.Object(
        [&]
        {
            json.Member("name", step.name);
            json.Key("header");
            WriteHeader(json, *step.header);
            json.Key("profile");
            WriteLayer(json, step.profile);
            json.ArrayMember("profileExtents",
                             [&]
                             {
                                 if (step.extents.IsEmpty())
                                     return;
                                 json.Value(step.extents.LowerLeft());
                                 json.Value(step.extents.UpperRight());
                             });
            WriteLayers(json, "layers", step.layers);
            json.ArrayMember("components",
                             [&]
                             {
                                 for (const ComponentsSummary& file : step.components)
                                     WriteComponents(json, file);
                             });
            json.Key("eda");
            WriteEda(json, step);
            json.ObjectMember("netlist",
                              [&]
                              {
                                  json.Member("nets", step.netlistNets);
                                  json.Member("points", step.netlistPoints);
                              });
        });
}

void WriteMatrix(JsonOutput& json, const CJOBXmatrix& matrix)
{
    json.Object(
        [&]
        {
            json.Records("steps", matrix.m_arrSteps, [&](const CJOBXmatrixStep& step) { WriteRecord(json, step); });
            json.Records("layers", matrix.m_arrLayers,
                         [&](const CJOBXmatrixLayer& layer)
                         {
                             json.Object(
                                 [&]
                                 {
                                     json.Member("row", layer.m_nRow);
                                     json.Member("name", layer.m_sName);
                                     json.Member("context", layer.m_sContext);
                                     json.Member("type", layer.m_sType);
                                     json.Member("polarity", layer.m_sPolarity);
                                     json.Member("startName", layer.m_sStartName);
                                     json.Member("endName", layer.m_sEndName);
                                 });
                         });
        });
}

} // namespace

void PrintInfoJson(Output& output, const JobSummary& summary, const ReadJob* read)
{
    JsonOutput json(output, TextBytes::Utf8OrLatin1);
    json.Object(
        [&]
        {
            json.Member("name", summary.job.m_sName);
            if (read != nullptr)
                WriteBoardFacts(json, *read, BoardFacts(*read->job));
            WriteFields(json, *summary.job.m_pMisc);
            json.Key("matrix");
            WriteMatrix(json, *summary.job.m_pMatrix);
            json.ArrayMember("steps",
                             [&]
                             {
                                 for (const StepSummary& step : summary.steps)
                                     WriteStep(json, step);
                             });
            WriteLayers(json, "symbols", summary.symbols);
            json.ObjectMember("font",
                              [&]
                              {
                                  json.Member("characters", static_cast<std::int64_t>(
                                                                summary.job.m_pFonts->m_arrCharacters.GetSize()));
                                  json.Member("strokes", summary.strokes);
                              });
            json.Records("sysAttrs", *summary.job.m_pSysAttrs,
                         [&](const CJOBXsysAttrData& attribute)
                         {
                             json.Object(
                                 [&]
                                 {
                                     json.Member("name", attribute.m_sName);
                                     json.Member("options", attribute.m_arrOptions);
                                 });
                         });
        });
    json.Finish();
}
