// What can be said about the EDA data of a step.
#pragma once

#include "reading/CJOBXmessage.h"

namespace eda_message
{
inline constexpr CJOBXmessageKind kTooFew{"EDA001", JOBXseverity::Error, "A record has too few fields.",
                                          "PKG R0603 0.063 with no bounding box",
                                          "The record is kept with defaults for the rest; export the job again."};
inline constexpr CJOBXmessageKind kTooMany{"EDA002", JOBXseverity::Warning, "A record has too many fields.",
                                           "FID C 3 45 6", "The further fields are not kept; export the job again."};
inline constexpr CJOBXmessageKind kNotNumber{
    "EDA003", JOBXseverity::Error, "A field that should be a number is not one.", "PIN 1 S zero 0 0 E S",
    "The field is read as the number that it begins with, or 0; export the job again."};
inline constexpr CJOBXmessageKind kNoOwner{
    "EDA004", JOBXseverity::Error, "A record stands before the record that it should belong to.",
    "SNT VIA before the first NET", "The record is not in the model; export the job again."};
inline constexpr CJOBXmessageKind kUnknown{"EDA005", JOBXseverity::Note, "A record is of a kind that is not known.",
                                           "XYZ 1 2 3", "The record is not in the model."};
inline constexpr CJOBXmessageKind kNoLayer{
    "EDA006", JOBXseverity::Error, "A feature's layer number is not among the names of the LYR record.",
    "FID C 9 0 where LYR has three names", "The net is not connected to that feature; export the job again."};
inline constexpr CJOBXmessageKind kOtherNumber{
    "EDA007", JOBXseverity::Warning, "A comment gives a net or package another number than its position.",
    "# NET 5 before the first net", "The position counts; references to nets and packages count positions."};
inline constexpr CJOBXmessageKind kNeverClosed{"EDA008", JOBXseverity::Error, "A contour or a polygon is not closed.",
                                               "CT and OB with no OE and CE behind them",
                                               "The lines are kept; the outline may be wrong."};
inline constexpr CJOBXmessageKind kNeverOpened{
    "EDA009", JOBXseverity::Error, "A line of a contour or a polygon stands outside of one.",
    "OS 1 2 with no OB before it", "The line is kept; the outline may be wrong."};
inline constexpr CJOBXmessageKind kSameName{"EDA010", JOBXseverity::Warning,
                                            "Two nets have the same name if letter case is ignored.",
                                            "NET gnd and NET GND", "Both are kept; look-ups by name find the first."};
inline constexpr CJOBXmessageKind kNoFeature{
    "EDA011", JOBXseverity::Error, "A feature's number is beyond the features of its layer.",
    "FID C 0 12 where the layer has ten features", "The net is not connected to that feature; export the job again."};
inline constexpr CJOBXmessageKind kNoComponent{"EDA012", JOBXseverity::Error,
                                               "A toeprint subnet names a component or toeprint that does not exist.",
                                               "SNT TOP T 40 0 where the top side has ten components",
                                               "The net is not connected to that pin; export the job again."};
inline constexpr CJOBXmessageKind kNoSuchLayer{
    "EDA013", JOBXseverity::Warning, "A name of the LYR record is neither a layer of the step nor of the matrix.",
    "LYR top where there is no layer TOP", "Nets are not connected to features of that layer; export the job again."};

inline constexpr const CJOBXmessageKind* kAll[] = {&kTooFew,    &kTooMany,     &kNotNumber,   &kNoOwner,     &kUnknown,
                                                   &kNoLayer,   &kOtherNumber, &kNeverClosed, &kNeverOpened, &kSameName,
                                                   &kNoFeature, &kNoComponent, &kNoSuchLayer};
} // namespace eda_message
