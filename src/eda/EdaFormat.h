// The keywords of the EDA data file, spelled once for reader, writer and outlines.
#pragma once

#include <string_view>

namespace eda_format
{
inline constexpr std::string_view kHeader = "HDR";
inline constexpr std::string_view kLayers = "LYR";
inline constexpr std::string_view kNumberedNet = "# NET";
inline constexpr std::string_view kNet = "NET";
inline constexpr std::string_view kNumberedPackage = "# PKG";
inline constexpr std::string_view kPackage = "PKG";
inline constexpr std::string_view kPin = "PIN";
inline constexpr std::string_view kFeatureGroup = "FGR";
inline constexpr std::string_view kProperty = "PRP";
inline constexpr std::string_view kSubnet = "SNT";
inline constexpr std::string_view kFeature = "FID";

// Kinds of subnets with additional fields, and the kind of a feature that is a hole.
inline constexpr std::string_view kToeprint = "TOP";
inline constexpr std::string_view kPlane = "PLN";
inline constexpr std::string_view kVia = "VIA";
inline constexpr std::string_view kTrace = "TRC";
inline constexpr std::string_view kTopSide = "T"; // of a toeprint
inline constexpr std::string_view kBottomSide = "B";
inline constexpr std::string_view kHole = "H";
inline constexpr std::string_view kFeatureTypes = "CLH"; // copper, laminate, hole

// Outlines of packages and pins.
inline constexpr std::string_view kCircle = "CR";
inline constexpr std::string_view kSquare = "SQ";
inline constexpr std::string_view kRectangle = "RC";
inline constexpr std::string_view kContour = "CT";
inline constexpr std::string_view kContourEnd = "CE";

// Elements of a contour.
inline constexpr std::string_view kPolygon = "OB";
inline constexpr std::string_view kSegment = "OS";
inline constexpr std::string_view kCurve = "OC";
inline constexpr std::string_view kPolygonEnd = "OE";
} // namespace eda_format
