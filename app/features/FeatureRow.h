// A feature as a row of a table and as an object of NDJSON.
#pragma once

#include "features/FeatureSearch.h"
#include "features/RecordLines.h"
#include "model/ShownUnit.h"
#include "output/JsonOutput.h"
#include "output/Table.h"
#include "output/TableView.h"

#include <optional>
#include <string>
#include <utility>

// Knows the lines of the layer that was asked for last.
class LineFinder
{
public:
    explicit LineFinder(std::string jobPath) : m_jobPath(std::move(jobPath)) {}

    // The file below the job, and the line of the feature in it; no line for a compressed file.
    const std::string& FileOf(const FoundFeature& found) { return Lines(found).file; }
    std::optional<int> LineOf(const FoundFeature& found);

private:
    const RecordLines& Lines(const FoundFeature& found);

    std::string m_jobPath;
    const CJOBXlayer* m_pLayer = nullptr;
    RecordLines m_lines;
};

extern const TableKind kFeatureTable;

// An empty table of features, and a row for it.
Table EmptyFeatureTable(const ShownUnit& unit);
std::vector<Cell> FeatureCells(const FoundFeature& found, const ShownUnit& unit, LineFinder& lines);

// Writes the feature as one object, lengths in millimetres.
void WriteFeature(JsonOutput& json, const FoundFeature& found, LineFinder& lines);
