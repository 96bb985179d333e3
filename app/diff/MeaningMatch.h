#pragma once

#include "diff/Meaning.h"

#include <cstdint>
#include <string>
#include <vector>

// Which records of two lists say the same. Equal ones share a number from 0; the others have -1.
struct MeaningMatch
{
    std::vector<std::int64_t> a; // for each record of the first list
    std::vector<std::int64_t> b;
};

// Pairs records with the same words and with numbers that differ by at most the tolerance. Equal numbers are paired
// first, and among them equal unique numbers. The order of the lists does not matter, except among equal records.
// Time:      n log n, as long as few records have the same words and nearly the same first number.
MeaningMatch MatchMeanings(const std::vector<Meaning>& a, const std::vector<Meaning>& b, double tolerance);

// Likewise, only of equal numbers. Time: n.
MeaningMatch MatchEqualMeanings(const std::vector<Meaning>& a, const std::vector<Meaning>& b);

// The words and the rounded numbers of a record, as bytes: those of equal records are equal.
std::string KeyOf(const Meaning& meaning);

// Whether two numbers are equal within a tolerance; every nan equals every other.
bool AreNear(double a, double b, double tolerance);
