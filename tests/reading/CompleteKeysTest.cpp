// Files of keys: matrix, job information, step header. And the font.
#include "job/CJOBXmatrix.h"
#include "job/CJOBXmisc.h"
#include "job/CJOBXsteps.h"
#include "layer/CJOBXfonts.h"
#include "reading/CompleteRead.h"
#include "step/CJOBXstephdr.h"

#include <gtest/gtest.h>

namespace
{
constexpr char kMatrixFile[] = "matrix/matrix";
constexpr char kInfoFile[] = "misc/info";
constexpr char kHeaderFile[] = "steps/pcb/stephdr";
constexpr char kFontFile[] = "fonts/standard";
constexpr char kSoundMatrix[] = "STEP {\nCOL=1\nNAME=PCB\n}\n";

const CJOBXstephdr& HeaderOf(const CompleteRead& read)
{
    return *read.job->m_pSteps->m_arrSteps.GetAt(0)->GetHeader();
}

TEST(CompleteMatrix, KeepsEveryKey)
{
    const CompleteRead read(kMatrixFile, "ID=3\nSTEP {\ncol = 2\nNAME=PCB\nID=7\nCOLOR=5\nWIDTH=9\n}\nLAYER{\nROW=1\n"
                                         "CONTEXT = BOARD \nTYPE=DRILL\nNAME=TOP\nPOLARITY=POSITIVE\nSTART_NAME=top\n"
                                         "END_NAME=\nOLD_NAME=x\nADD_TYPE=y\nCOLOR=1\nID=8\nCU_TOP=18\nNEW=a=b\n}\n"
                                         "EXTRA {\nA=1\n}\n");
    EXPECT_EQ(read.codes, (Strings{"6: note MAT007", "7: note MAT007", "22: note MAT007", "24: note MAT007"}));
    const CJOBXmatrix& matrix = *read.job->m_pMatrix;
    EXPECT_EQ(TextOf(matrix.pGetFurtherKeys()), "ID/0/3 EXTRA.A/0/1 ");
    ASSERT_EQ(matrix.m_arrSteps.GetSize(), 1);
    const CJOBXmatrixStep& step = *matrix.m_arrSteps.GetAt(0);
    EXPECT_EQ(step.m_nColumn, 2) << "not the 5 of COLOR";
    EXPECT_EQ(step.GetID(), 7);
    EXPECT_EQ(step.GetSourceLine(), 2) << "where its block begins";
    EXPECT_EQ(TextOf(step.pGetFurtherKeys()), "COLOR/0/5 WIDTH/0/9 ");
    ASSERT_EQ(matrix.m_arrLayers.GetSize(), 1);
    const CJOBXmatrixLayer& layer = *matrix.m_arrLayers.GetAt(0);
    EXPECT_EQ(layer.m_nRow, 1);
    EXPECT_EQ(layer.m_sContext, "BOARD");
    EXPECT_EQ(layer.m_sType, "DRILL");
    EXPECT_EQ(layer.m_sName, "TOP");
    EXPECT_EQ(layer.m_sPolarity, "POSITIVE");
    EXPECT_EQ(layer.m_sStartName, "top");
    EXPECT_EQ(layer.m_sEndName, "");
    EXPECT_EQ(layer.m_sOldName, "x");
    EXPECT_EQ(layer.m_sAddType, "y");
    EXPECT_EQ(layer.m_sColor, "1");
    EXPECT_EQ(layer.GetID(), 8);
    EXPECT_EQ(layer.GetSourceLine(), 9);
    EXPECT_EQ(TextOf(layer.pGetFurtherKeys()), "CU_TOP/0/18 NEW/0/a=b ");
    EXPECT_EQ(layer.sGetFurtherValue("cu_top"), "18");
    EXPECT_EQ(layer.sGetFurtherValue("CU_BOTTOM"), "");
}

TEST(CompleteMatrix, KeysAfterTheEndOfABlockAreNotOfTheBlock)
{
    const CompleteRead read(kMatrixFile, std::string(kSoundMatrix) + "NAME=x\n");
    EXPECT_EQ(read.codes, Strings{"5: note MAT007"});
    EXPECT_EQ(read.job->m_pMatrix->m_arrSteps.GetAt(0)->m_sName, "PCB");
    EXPECT_EQ(TextOf(read.job->m_pMatrix->pGetFurtherKeys()), "NAME/0/x ");
}

TEST(CompleteMatrix, WhatIsWrongIsReportedWithItsLine)
{
    ExpectCodes(kMatrixFile, kSoundMatrix,
                {{"LAYER {\nNAME=A\nROW=first\n}\n", {"7: error MAT005"}},
                 {"LAYER {\nNAME=A\nROW=\n}\n", {"7: error MAT005"}},
                 {"LAYER {\nNAME=A\nID=-1\n}\n", {"7: error MAT005"}},
                 {"LAYER\n", {"5: warning MAT006"}},
                 {"=1\n", {"5: warning MAT006"}},
                 {"A=1\nA {\n}\nA=2\n", {"5: note MAT007", "6: note MAT007", "8: warning MAT008"}},
                 {"LAYER {\nROW=1\nNAME=A\nrow=2\n}\n", {"8: warning MAT008"}},
                 {"LAYER {\nNAME=A\nLAYER {\nNAME=B\n}\n", {"5: error MAT009"}},
                 {"LAYER {\nNAME=A\n", {"5: error MAT009"}},
                 {"}\n", {"5: warning MAT010"}},
                 {"LAYER {\nNAME=A\n}\nLAYER {\nNAME=a\n}\n", {"8: warning MAT011"}},
                 {"STEP {\nNAME=pcb\n}\n", {"5: warning MAT011"}},
                 {"LAYER {\nROW=1\n}\n", {"5: error MAT012"}},
                 {"STEP {\nCOL=2\n}\n", {"5: error MAT012"}},
                 {"LAYER {\nNAME=A\nSTART_NAME=B\nEND_NAME=C\n}\n", {"5: error MAT013", "5: error MAT013"}},
                 {"LAYER {\nNAME=A\nTYPE=X\nCONTEXT=Y\nPOLARITY=Z\n}\n",
                  {"5: warning MAT014", "5: warning MAT014", "5: warning MAT014"}},
                 {"LAYER {\nNAME=A\nTYPE=signal\nCONTEXT=Misc\nPOLARITY=NEGATIVE\n}\n", {}},
                 {"LAYER {\nNAME=A\nROW=3\n}\nLAYER {\nNAME=B\nROW=3\n}\n", {"9: warning MAT015"}},
                 {"STEP {\nNAME=B\nCOL=1\n}\n", {"5: warning MAT015"}}});
}

TEST(CompleteInfo, KeepsEveryKey)
{
    const CompleteRead read(kInfoFile, "JOB_NAME=j\nUNITS=MM\nODB_VERSION_MAJOR=8\nODB_VERSION_MINOR=1\n"
                                       "ODB_SOURCE=s\nCREATION_DATE=c\nsave_date=d\nSAVE_APP=a\nSAVE_USER=\n"
                                       "MAX_UID=77\nECHAR=1\nX {\nA=1\n}\n");
    EXPECT_EQ(read.codes, (Strings{"11: note INF003", "12: note INF003"}));
    const CJOBXmisc& misc = *read.job->m_pMisc;
    EXPECT_EQ(misc.m_sJobName, "j");
    EXPECT_EQ(misc.GetUnit(), JOBXunit::Millimetre);
    EXPECT_EQ(misc.m_nODBVersionMajor, 8);
    EXPECT_EQ(misc.m_nODBVersionMinor, 1);
    EXPECT_EQ(misc.m_sODBSource, "s");
    EXPECT_EQ(misc.m_sCreationDate, "c");
    EXPECT_EQ(misc.m_sSaveDate, "d") << "in small letters too";
    EXPECT_EQ(misc.m_sSaveApp, "a");
    EXPECT_EQ(misc.m_sSaveUser, "");
    EXPECT_EQ(TextOf(misc.pGetFurtherKeys()), "MAX_UID/0/77 ECHAR/0/1 X.A/0/1 ");
}

TEST(CompleteInfo, WhatIsWrongIsReportedWithItsLine)
{
    ExpectCodes(kInfoFile, "",
                {{"ODB_VERSION_MAJOR=8x\n", {"1: error INF001"}},
                 {"JOB_NAME j\n", {"1: warning INF002"}},
                 {"}\n", {"1: warning INF002"}},
                 {"COLOR=1\nCOLOR=2\n", {"1: note INF003", "2: warning INF004"}},
                 {"# JOB_NAME\n\nSAVE_APP=x\n", {}}});
}

TEST(CompleteStephdr, KeepsEveryKey)
{
    const CompleteRead read(kHeaderFile,
                            "UNITS=INCH\nX_DATUM=1\nY_DATUM=2\nX_ORIGIN=3\nY_ORIGIN=4\nAFFECTING_BOM=a\n"
                            "AFFECTING_BOM_CHANGED=b\ntop_active=5\nONLINE_DRC_BEEP_TONE=6\nID=7\nNEW=8\n"
                            "STEP-REPEAT{\nNAME=pcb\nX=1.5\nY=2.5\nDX=3.5\nDY=4.5\nNX=2\nNY=3\nANGLE=45.5\n"
                            "MIRROR=yes\nFLIP=NO\nID=9\nSPIN=1\n}\nOTHER {\nA=1\n}\n");
    EXPECT_EQ(read.codes, (Strings{"11: note HDR003", "24: note HDR003", "26: note HDR003"}));
    const CJOBXstephdr& header = HeaderOf(read);
    EXPECT_EQ(header.GetUnit(), JOBXunit::Inch);
    EXPECT_EQ(header.m_ptDatum, CPointD(1, 2));
    EXPECT_EQ(header.m_ptOrigin, CPointD(3, 4));
    EXPECT_EQ(header.m_sAffectingBom, "a") << "not the b of the longer key";
    EXPECT_EQ(header.m_sAffectingBomChanged, "b");
    EXPECT_EQ(header.m_sTopActive, "5");
    EXPECT_EQ(header.m_sOnlineDrcBeepTone, "6");
    EXPECT_EQ(header.GetID(), 7);
    EXPECT_EQ(TextOf(header.pGetFurtherKeys()), "NEW/0/8 OTHER.A/0/1 ");
    ASSERT_EQ(header.m_arrStepRepeats.GetSize(), 1);
    const CJOBXstepRepeat& entry = *header.m_arrStepRepeats.GetAt(0);
    EXPECT_EQ(entry.m_sName, "pcb");
    EXPECT_EQ(entry.m_ptPosition, CPointD(1.5, 2.5));
    EXPECT_EQ(entry.m_ptPitch, CPointD(3.5, 4.5));
    EXPECT_EQ(entry.m_ptCount, CPointN(2, 3));
    EXPECT_EQ(entry.m_dAngle, 45.5) << "not cut to an integer";
    EXPECT_EQ(entry.m_sMirror, "yes");
    EXPECT_EQ(entry.m_sFlip, "NO");
    EXPECT_EQ(entry.GetID(), 9);
    EXPECT_EQ(entry.GetSourceLine(), 12) << "where its block begins";
    EXPECT_EQ(TextOf(entry.pGetFurtherKeys()), "SPIN/0/1 ");
}

TEST(CompleteStephdr, WithoutAUnitsLineHasTheUnitOfTheJob)
{
    EXPECT_EQ(HeaderOf(CompleteRead(kHeaderFile, "X_DATUM=1\n")).GetUnit(), JOBXunit::Millimetre);
}

TEST(CompleteStephdr, AnEntryThatIsNotClosedIsKept)
{
    const CompleteRead read(kHeaderFile, "STEP-REPEAT {\nNAME=PCB\nNX=1\n");
    EXPECT_EQ(read.codes, (Strings{"1: error HDR005", "1: warning HDR008"}));
    EXPECT_EQ(HeaderOf(read).m_arrStepRepeats.GetSize(), 1);
}

TEST(CompleteStephdr, WhatIsWrongIsReportedWithItsLine)
{
    ExpectCodes(
        kHeaderFile, "",
        {{"X_DATUM=left\n", {"1: error HDR001"}},
         {"X_DATUM=inf\n", {"1: error HDR001"}},
         {"X_DATUM 1\n", {"1: warning HDR002"}},
         {"X_DATUM=1\nX_DATUM=2\n", {"2: warning HDR004"}},
         {"}\n", {"1: warning HDR006"}},
         {"STEP-REPEAT {\nNAME=GONE\nNX=1\nNY=1\n}\n", {"1: error HDR007"}},
         {"STEP-REPEAT {\nNAME=PCB\nNX=0\nNY=1\n}\n", {"1: warning HDR008"}},
         {"STEP-REPEAT {\nNAME=PCB\nNX=1\nNY=0\n}\n", {"1: warning HDR008"}},
         {"STEP-REPEAT {\nNAME=PCB\nNX=1\nNY=1\nMIRROR=X\nFLIP=Y\n}\n", {"1: warning HDR009", "1: warning HDR009"}},
         {"UNITS=MM\nUNITS=INCH\n", {"2: warning UNI002"}}});
}

TEST(CompleteFont, IsInInchesUnlessItNamesAUnit)
{
    EXPECT_EQ(CompleteRead(kFontFile, "XSIZE 0.3\n").job->m_pFonts->GetUnit(), JOBXunit::Inch);
    EXPECT_EQ(CompleteRead(kFontFile, "UNITS=MM\n").job->m_pFonts->GetUnit(), JOBXunit::Millimetre);
}

TEST(CompleteFont, KeepsEveryField)
{
    const CompleteRead read(kFontFile, "XSIZE  0.1\nysize 0.2\nOFFSET -0.3\nCHAR #\nLINE 1 2 3 4 P R 0.5\n"
                                       "LINE 1 2 3 4 N S 0.5\nECHAR\nCHAR A\nECHAR\n");
    EXPECT_EQ(read.codes, Strings{});
    const CJOBXfonts& font = *read.job->m_pFonts;
    EXPECT_EQ(font.m_dXSize, 0.1);
    EXPECT_EQ(font.m_dYSize, 0.2) << "in small letters too";
    EXPECT_EQ(font.m_dOffset, -0.3);
    ASSERT_EQ(font.m_arrCharacters.GetSize(), 2);
    EXPECT_EQ(font.m_arrCharacters.GetAt(0)->m_sName, "#");
    ASSERT_EQ(font.m_arrCharacters.GetAt(0)->m_arrStrokes.GetSize(), 2);
    const CJOBXfontsStandardObj& stroke = *font.m_arrCharacters.GetAt(0)->m_arrStrokes.GetAt(1);
    EXPECT_EQ(stroke.m_ptStart, CPointD(1, 2));
    EXPECT_EQ(stroke.m_ptEnd, CPointD(3, 4));
    EXPECT_EQ(stroke.m_sPolarity, "N");
    EXPECT_EQ(stroke.m_sShape, "S");
    EXPECT_EQ(stroke.m_dWidth, 0.5);
}

TEST(CompleteFont, WhatIsWrongIsReportedWithItsLine)
{
    ExpectCodes(kFontFile, "",
                {{"CHAR A\nLINE 0 0 1 1 P R\nECHAR\n", {"2: error FNT001"}},
                 {"CHAR\nECHAR\n", {"1: error FNT001"}},
                 {"XSIZE\n", {"1: error FNT001"}},
                 {"CHAR A\nLINE 0 0 1 1 P R 1 9\nECHAR\n", {"2: warning FNT002"}},
                 {"XSIZE wide\n", {"1: error FNT003"}},
                 {"LINE 0 0 1 1 P R 1\nECHAR\n", {"1: error FNT004", "2: error FNT004"}},
                 {"CHAR A\nECHAR\nLINE 0 0 1 1 P R 1\n", {"3: error FNT004"}},
                 {"CHAR A\nCHAR B\n", {"1: warning FNT005", "2: warning FNT005"}},
                 {"ARC 1\narc 2\n", {"1: note FNT006", "2: note FNT006"}},
                 {"CHAR A\nECHAR\nCHAR A\nECHAR\nCHAR a\nECHAR\n", {"3: warning FNT007"}},
                 {"CHAR A\nLINE 0 0 1 1 X Y 1\nECHAR\n", {"2: warning FNT008", "2: warning FNT008"}}});
}
} // namespace
