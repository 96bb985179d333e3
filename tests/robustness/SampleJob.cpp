#include "robustness/SampleJob.h"

#include "support/TempDir.h"
#include "support/TestPaths.h"

#include <filesystem>

namespace fs = std::filesystem;

namespace
{
constexpr const char* kMatrix = R"(STEP {
    COL=1
    NAME=PCB
}

LAYER {
    ROW=1
    CONTEXT=BOARD
    TYPE=SIGNAL
    NAME=A_LAYER_WITH_A_RATHER_LONG_NAME
    POLARITY=POSITIVE
    START_NAME=
    END_NAME=
    OLD_NAME=
}
)";

constexpr const char* kFeatures = R"(U INCH
$0 r10
$1 a_symbol_with_a_long_name
@0 .geometry_with_a_long_name
@1 .drill
&0 a text that is longer than most
L 0 0 1 1 0 P 0 ;0=0,1=1
P 0.5 0.5 1 P 0 8 45 ;0=0
A 0 0 1 1 0.5 0.5 0 P 0 Y
T 0 0 standard P 0 0.1 0.1 0.5 'a text that is longer than most' 1
B 0 0 UPC39 standard P 0 E 0.012 0.2 Y Y 'a bar code of some length' ;1
S P 0 ;1=2
OB 0 0 I
OS 0 1
OC 0 0 0 0.5 Y
OE
SE
)";

constexpr const char* kComponents = R"(UNITS=INCH
@0 .comp_mount_type
&0 a text that is longer than most
# CMP 0
CMP 0 0.5 0.5 90 N U1 A_PART_WITH_A_LONG_NAME ;0=1
PRP VALUE 'a value that is longer than most'
TOP 0 0.4 0.5 90 N 0 0 1
)";

constexpr const char* kEda = R"(# 1
HDR a header that is longer than most
LYR a_layer_with_a_rather_long_name b
# NET 0
NET A_NET_WITH_A_RATHER_LONG_NAME ;0
SNT TOP T 0 0
FID C 0 0
SNT VIA
FID H 0 1
SNT PLN S E 0
SNT TRC
# PKG 0
PKG A_PACKAGE_WITH_A_LONG_NAME 0.1 -1 -1 1 1
CT
OB 0 0 I
OS 0 1
OC 0 0 0 0.5 Y
OE
CE
RC 0 0 1 1
PRP NAME 'a value that is longer than most'
PIN 1 S 0 0 0 E S
CR 0 0 0.1
SQ 0 0 0.1
)";

constexpr const char* kNetlist = R"(H optimize n staggered n
$0 A_NET_WITH_A_RATHER_LONG_NAME
#
#Netlist points
#
0 0.012 0.1 0.1 T e e staggered 0 0 0 v
)";

constexpr const char* kHeader = R"(X_DATUM=0
Y_DATUM=0
STEP-REPEAT {
    NAME=A_STEP_WITH_A_RATHER_LONG_NAME
    X=0
    Y=0
    DX=1
    DY=1
    NX=2
    NY=2
    ANGLE=90
    MIRROR=NO
}
AFFECTING_BOM=a text that is longer than most
)";

constexpr const char* kFont = R"(XSIZE  0.302000
YSIZE  0.302000
OFFSET 0.000000

CHAR A
LINE 0 0.2 0 0 P R 0.012
LINE 0 0.1 0.1 0.1 P R 0.012
ECHAR
)";

constexpr const char* kTools = R"(UNITS=INCH
USER_PARAMS=a text that is longer than most
TOOLS {
    NUM=1
    TYPE=PLATED
    A_KEY_THAT_NOBODY_KNOWS=and a value that is longer than most
}
)";

constexpr const char* kInfo = R"(JOB_NAME=a job with a rather long name
ODB_VERSION_MAJOR=7
ODB_SOURCE=by hand, and with a long text
CREATION_DATE=20260105.090000
SAVE_DATE=20260105.090000
)";

} // namespace

std::string CopySample(const TempDir& dir)
{
    const std::string job = dir.Path("blinker");
    fs::copy(SamplesDir() + "/blinker", job, fs::copy_options::recursive);
    return job;
}

std::string MakeSmallJob(const TempDir& dir)
{
    const std::string step = "small/steps/pcb/"; // the matrix says PCB: found by listing
    dir.Write("small/matrix/matrix", kMatrix);
    dir.Write(step + "profile", "S P 0\nOB 0 0 I\nOS 1 0\nOS 0 1\nOE\nSE\n");
    dir.Write(step + "stephdr", kHeader);
    dir.Write(step + "attrlist", ".comment = a text that is longer than most\n");
    dir.Write(step + "layers/a_layer_with_a_rather_long_name/features", kFeatures);
    dir.Write(step + "layers/a_layer_with_a_rather_long_name/attrlist", ".layer_dielectric = 0.1\n");
    dir.Write(step + "layers/b/FEATURES", "P 0 0 0 P 0 0\n"); // found by listing too
    dir.Write(step + "layers/comp_+_top/components", kComponents);
    dir.Write(step + "eda/data", kEda);
    dir.Write(step + "netlists/cadnet/netlist", kNetlist);
    dir.Write(step + "netlists/another_netlist/netlist", kNetlist);
    dir.Write(step + "layers/a_layer_with_a_rather_long_name/tools", kTools);
    dir.Write(step + "eda/shortf", "a record of a short that is longer than most\n");
    dir.Write("small/user/a_file_that_no_reader_takes", "");
    dir.Write("small/fonts/standard", kFont);
    dir.Write("small/misc/info", kInfo);
    dir.Write("small/symbols/a_symbol_with_a_long_name/features", "P 0 0 0 P 0 0\n");
    dir.Write("small/symbols/compressed/features.Z",
              FileBytes(SamplesDir() + "/blinker/symbols/mount_ring/features.Z"));
    return dir.Path("small");
}
