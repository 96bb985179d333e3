// Writes jobs of any size for benchmarks and stress tests. The same plan gives the same bytes on every machine.
//
// The mix of records is that of two real boards together (12.4 MB: an eleven-layer computer in inches and a two-layer
// one in millimetres):
//
//   | bytes                                 | features files 92 %, EDA data 5 %, netlist 1.3 %, components 1.1 %    |
//   | features                              | L 90.4 %, P 8.4 %, S 0.9 %, A 0.24 %; T and B none, here a few        |
//   | bytes of a feature                    | 66                                                                    |
//   | attributes of a feature               | 2.55: of L 3 (62 %), 4 (16 %), 0 (13 %), 1 (9 %);                     |
//   |                                       | of P 2 (54 %), 3 (36 %), 1 (9 %); of S 1 (87 %), 0 (12 %);            |
//   |                                       | of A 0 (67 %), 1 (33 %)                                               |
//   | values of the attributes              | none 35 %, the number of a text 37 %, a number with a point 28 %      |
//   | features in a row with equal list     | 14.8; different lists: one for 95 features                            |
//   | attribute texts of a layer            | one for 96 features, of 15 bytes a line                               |
//   | lines that begin where the last ended | 80 %                                                                  |
//   | decimals of a coordinate              | 1: 1 %, 2: 5.5 %, 3: 11.5 %, 4: 6 %, 5: 2.5 %, 6: 8 %, 7: 13 %,       |
//   |                                       | 8: 50 %, 11: 1 %, 12: 1.5 %                                           |
//   | contours of a surface                 | 1.9, each of 10.2 points, of which 20 % end an arc                    |
//   | nets and components for a megabyte    | 36 and 39                                                             |
//   | subnets of a net                      | 14.6: TRC 36 %, TOP 31 %, PLN 20 %, VIA 13 %; 3.4 features each       |
//   | packages                              | one for 7 components; 16.4 pins, most with a CR or RC outline;        |
//   |                                       | 3.5 contours, each of 24 points                                       |
//   | lines of a component                  | PRP 2.2, TOP 4.2; one attribute                                       |
//   | points of a net                       | 6.5: round 34 %, round with a flag 30 %, with width and height 36 %   |
//
// Neither board has user symbols; here each has forty features without attributes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>

struct JobPlan
{
    double megabytes = 30.0;                // of all files together, in millions of bytes
    int layers = 12;                        // with features, in every step; component layers come on top
    int steps = 1;                          // the first repeats the others
    int symbols = 20;                       // user symbols
    bool compressSymbols = false;           // each as "features.Z"
    bool uniqueNumbers = false;             // a tail ";0,2=1;ID=61417" for each feature of a layer
    std::optional<std::int64_t> nets;       // of all steps together; without a number as many as fit the size
    std::optional<std::int64_t> components; // likewise
    double balance = 1.0;                   // 1: every layer is equally large; 0: the first layer has it all
    std::uint64_t seed = 1;
};

// What a reader finds in the job.
struct JobCounts
{
    std::uint64_t bytes = 0;
    std::int64_t files = 0;
    std::int64_t steps = 0;
    std::int64_t layers = 0; // of all steps, with features; component layers not counted
    std::int64_t symbols = 0;
    std::int64_t symbolFeatures = 0;
    std::int64_t features = 0; // of all layers
    std::int64_t lines = 0;
    std::int64_t pads = 0;
    std::int64_t arcs = 0;
    std::int64_t surfaces = 0;
    std::int64_t texts = 0;
    std::int64_t barcodes = 0;
    std::int64_t contours = 0;
    std::int64_t contourElements = 0; // one for each OB, OS, OC and OE line
    std::int64_t featureAttributes = 0;
    std::int64_t nets = 0; // in the EDA data and, again, in the netlists
    std::int64_t subnets = 0;
    std::int64_t netFeatures = 0;
    std::int64_t packages = 0;
    std::int64_t pins = 0;
    std::int64_t components = 0;
    std::int64_t componentProperties = 0;
    std::int64_t toeprints = 0;
    std::int64_t netPoints = 0;
};

// Writes the job into `directory`, which is made and must not hold anything. A plan that makes no sense raises
// std::invalid_argument, and what cannot be written std::runtime_error.
JobCounts GenerateJob(const JobPlan& plan, const std::filesystem::path& directory);
