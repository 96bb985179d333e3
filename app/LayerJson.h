// The whole of a features file and of a components file as JSON.
#pragma once

#include "JsonOutput.h"

void WriteProperties(JsonOutput& json, std::string_view key, const CJOBXPropertyArray& properties);
void WriteProperties(JsonOutput& json, std::string_view key, const CLPropertyArray& properties);

// One object.
void WriteLayer(JsonOutput& json, const CJOBXlayer& layer);

// The member `key`: an array of objects, sorted by layer name.
void WriteComponents(JsonOutput& json, std::string_view key, const CJOBXcomponentsArray& components);
