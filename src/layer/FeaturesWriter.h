// Writes a layer as a features file.
#pragma once

#include "foundation/CTextWriter.h"

class CJOBXlayObj;
class CJOBXlayer;

// The whole file: header, tables, features.
void WriteFeatures(CTextWriter& out, const CJOBXlayer& layer);

// One feature with its attribute list; for a surface also its contours.
void WriteFeature(CTextWriter& out, const CJOBXlayObj& feature);

// A feature's attribute list, without attributes that lack a number, and the line end.
void WriteFeatureAttributes(CTextWriter& out, const CJOBXlayObj& feature);
