// Writing a features file from a layer.
#pragma once

#include "foundation/CTextWriter.h"

class CJOBXlayObj;
class CJOBXlayer;

// The whole file: header, tables, features.
void WriteFeatures(CTextWriter& out, const CJOBXlayer& layer);

// One feature with its attribute list; for a surface also its contours.
void WriteFeature(CTextWriter& out, const CJOBXlayObj& feature);

// A feature's attribute list, of the attributes that have both numbers, and the line end.
void WriteFeatureAttributes(CTextWriter& out, const CJOBXlayObj& feature);
