#include <gtest/gtest.h>

#include <bitset>
#include <cstdio>

#include "obd/trouble_codes.h"
#include "obd/value_fields.h"
#include "support/test_app.h"

namespace ketrel {
namespace {

std::string hex2(int b) {
    char s[3];
    std::snprintf(s, sizeof s, "%02X", b & 0xFF);
    return s;
}

// Leaves a reply in the byte cells the way the receive path does: every cell cleared, then
// byte n as two hex digits, as eight bits, and for bytes 1 to 4 as a number.
void SetReply(App& app, const std::string& mode, const std::vector<int>& bytes) {
    app.ByteBits.fill("");
    app.ByteHex.fill("");
    for (int n = 1; n <= 4; ++n)
        app.ByteValue[std::size_t(n)].reset();
    app.RxMode = mode;
    app.RxPID = mode == "02" ? "02" : "";
    app.RawFrame = "V486B10" + hex2(0x40 + std::stoi(mode));
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        std::size_t n = i + 1;
        app.ByteHex[n] = hex2(bytes[i]);
        app.ByteBits[n] = std::bitset<8>(unsigned(bytes[i])).to_string();
        if (n <= 4) app.ByteValue[n] = bytes[i];
        app.RawFrame += hex2(bytes[i]);
    }
}

// The bytes of a reply carrying these codes, two bytes each (0x0133 is P0133).
std::vector<int> Pairs(std::initializer_list<int> codes) {
    std::vector<int> bytes;
    for (int c : codes) {
        bytes.push_back(c >> 8);
        bytes.push_back(c & 0xFF);
    }
    return bytes;
}

// The two list decoders differ only in their names, list, grid and rows; the rules that they
// share are tested on both.
struct CodeKind {
    const char* name;
    void (*decode)(App&);
    const char* mode;
    ListBox FrmMain::*list;
    Grid FrmMain::*grid;
    int firstRow, textCol;
};
// clang-format off
const CodeKind kStored{"stored", DecodeTroubleCodes, "03", &FrmMain::lstCodes,
                       &FrmMain::gridTroubleCode, 2, 3};
const CodeKind kPending{"pending", DecodePendingCodes, "07", &FrmMain::lstPendingCodes,
                        &FrmMain::gridPending, 1, 2};
// clang-format on

// An application as a new session leaves it: code grids formatted, nothing to print yet,
// File menu usable.
struct Codes {
    test::TestApp t;
    FrmMain& f = t->frmMain();
    Codes() {
        FormatCodeGrids(*t);
        f.cmdPrintFFData.setEnabled(false);
        f.mnuFilePrintFF.setEnabled(false);
    }
    void reply(const CodeKind& kind, std::vector<int> bytes) {
        SetReply(*t, kind.mode, bytes);
        kind.decode(*t);
    }
    void freezeReply(std::vector<int> bytes) {
        SetReply(*t, "02", bytes);
        DecodeFreezeCode(*t);
    }
    void clearReply(std::vector<int> bytes) {
        SetReply(*t, "04", bytes);
        ApplyClearReply(*t);
    }
    std::vector<std::string> list(const CodeKind& kind) { return (f.*kind.list).items(); }
    Grid& grid(const CodeKind& kind) { return f.*kind.grid; }
};

TEST(TroubleCodes, TheLetterComesFromTheTopBitsWhichStayInTheDigits) {
    struct Case {
        int first, second;
        const char* code;
    } cases[] = {
        {0x01, 0x33, "P0133"}, {0x00, 0x00, "P0000"}, {0x3F, 0xFF, "P3FFF"}, {0x41, 0x23, "C4123"},
        {0x81, 0x23, "B8123"}, {0xC1, 0x23, "UC123"}, {0x7F, 0x0A, "C7F0A"},
    };
    for (const Case& c : cases) {
        test::TestApp t;
        SetReply(*t, "03", {c.first, c.second});
        EXPECT_EQ(CodeText(*t, 1), c.code);
        EXPECT_EQ(CodeText(*t, 2), "");  // no bytes, no code
    }
    EXPECT_EQ(CodeLetter(""), "");
    EXPECT_EQ(CodeLetter("1"), "");
}

TEST(TroubleCodes, ACodeIsListedWithTypeAndTextForP0CodesOnly) {
    struct Case {
        int code;
        const char* text;
        const char* description;
    } cases[] = {
        {0x0133, "P0133", "Oxygen Sensor Circuit Slow Response (Bank 1 Sensor 1)"},
        {0x0300, "P0300", "Random/Multiple Cylinder Misfire Detected"},
        {0x4123, "C4123", ""},
        {0x1100, "P1100", ""},  // a Ford text exists, but only generic codes are described
        {0x0000, "P0000", ""},
    };
    for (const CodeKind* kind : {&kStored, &kPending}) {
        for (const Case& c : cases) {
            Codes s;
            s.reply(*kind, Pairs({c.code}));
            EXPECT_EQ(s.list(*kind), std::vector<std::string>{c.text});
            Grid& g = s.grid(*kind);
            EXPECT_EQ(g.text(kind->firstRow, 1), c.text) << kind->name;
            EXPECT_EQ(g.text(kind->firstRow, kind->textCol), c.description) << kind->name;
            EXPECT_EQ(s.f.gridTroubleCode.text(kind->firstRow, 2), kind == &kStored ? "TC" : "")
                << kind->name;
            EXPECT_TRUE(s.f.cmdPrintFFData.enabled() && s.f.mnuFilePrintFF.enabled());
            // The reply itself is kept, and the request marked answered.
            bool stored = kind == &kStored;
            EXPECT_EQ((stored ? s.t->TroubleCodes : s.t->PendingCodes)[1], c.text);
            EXPECT_TRUE(stored ? s.t->TroubleAnswered : s.t->PendingAnswered);
            EXPECT_FALSE(stored ? s.t->PendingAnswered : s.t->TroubleAnswered);
        }
    }
}

TEST(TroubleCodes, NewCodesAreAddedUntilTheFirstAlreadyListedOne) {
    struct Case {
        const char* what;
        std::vector<std::vector<int>> replies;
        std::vector<std::string> listed;
    } cases[] = {
        {"padding lists one P0000", {Pairs({0x0133, 0x0000, 0x0000})}, {"P0133", "P0000"}},
        {"the same reply twice adds nothing",
         {Pairs({0x0133, 0x0000, 0x0000}), Pairs({0x0133, 0x0000, 0x0000})},
         {"P0133", "P0000"}},
        {"a listed first code stops a new second",
         {Pairs({0x0133}), Pairs({0x0133, 0x0171})},
         {"P0133"}},
        {"new codes before the listed one still come in",
         {Pairs({0x0171}), Pairs({0x0420, 0x0171, 0x0300})},
         {"P0171", "P0420"}},
        {"a short reply lists only whole codes", {{0x01, 0x33, 0x01}}, {"P0133"}},
        {"codes of every letter are listed",
         {Pairs({0x4123, 0x8123, 0xC123})},
         {"C4123", "B8123", "UC123"}},
    };
    for (const CodeKind* kind : {&kStored, &kPending}) {
        for (const Case& c : cases) {
            Codes s;
            for (const auto& bytes : c.replies)
                s.reply(*kind, bytes);
            EXPECT_EQ(s.list(*kind), c.listed) << kind->name << ": " << c.what;
        }
    }
}

TEST(TroubleCodes, TheGridFillStopsTwoRowsShortOfTheGrid) {
    struct Case {
        int codes;
        bool fileMenu;
        int shown;
        bool printEnabled;  // a fill that runs out of rows ends the decoder before this
    } cases[] = {{8, true, 8, true}, {9, true, 8, false}, {8, false, 8, false}};
    for (const CodeKind* kind : {&kStored, &kPending}) {
        for (const Case& c : cases) {
            Codes s;
            s.f.mnuFile.setEnabled(c.fileMenu);
            ASSERT_EQ(s.grid(*kind).rows(), 10);
            std::vector<int> bytes;
            for (int i = 1; i <= c.codes; ++i) {
                bytes.push_back(0x01);
                bytes.push_back(0x30 + i);
            }
            s.reply(*kind, bytes);
            EXPECT_EQ(int(s.list(*kind).size()), c.codes);
            int filled = 0;
            for (int row = 1; row < 10; ++row)
                filled += !s.grid(*kind).text(row, 1).empty();
            EXPECT_EQ(filled, c.shown) << kind->name << " " << c.codes;
            EXPECT_EQ(s.grid(*kind).text(kind->firstRow + 7, 1), "P0138") << kind->name;
            EXPECT_EQ(s.f.cmdPrintFFData.enabled(), c.printEnabled) << kind->name;
        }
    }
}

TEST(FreezeCode, RowOneHoldsTheFreezeCodeBesideTheStoredCodes) {
    Codes s;
    s.reply(kStored, Pairs({0x0133, 0x1100}));
    s.freezeReply(Pairs({0x0171}));
    Grid& g = s.f.gridTroubleCode;
    EXPECT_EQ(g.text(1, 1), "P0171");
    EXPECT_EQ(g.text(1, 2), "FF");
    EXPECT_EQ(g.text(1, 3), "System Too Lean (Bank 1)");
    EXPECT_EQ(g.text(2, 1), "P0133");
    EXPECT_EQ(g.text(2, 2), "TC");
    EXPECT_EQ(g.text(3, 1), "P1100");
    EXPECT_EQ(s.f.lstFreezeCodes.items(), std::vector<std::string>{"P0171"});
    EXPECT_TRUE(s.t->FFCodeAnswered);
    EXPECT_TRUE(s.t->RequestFFData);
    EXPECT_EQ(s.t->LastFreezeCode, "P0171");

    // A later freeze code replaces the only item; a non-generic one leaves the old text.
    s.reply(kStored, Pairs({0x0420}));
    s.freezeReply(Pairs({0x1641}));
    EXPECT_EQ(s.f.lstFreezeCodes.items(), std::vector<std::string>{"P1641"});
    EXPECT_EQ(g.text(1, 1), "P1641");
    EXPECT_EQ(g.text(1, 3), "System Too Lean (Bank 1)");
    EXPECT_EQ(g.text(4, 1), "P0420");

    // An empty answer still writes its empty code and "FF", and keeps the list.
    s.t->RequestFFData = false;
    s.freezeReply({});
    EXPECT_EQ(g.text(1, 1), "");
    EXPECT_EQ(g.text(1, 2), "FF");
    EXPECT_EQ(s.f.lstFreezeCodes.items(), std::vector<std::string>{"P1641"});
    EXPECT_TRUE(s.t->RequestFFData);
}

TEST(CodeAlert, ShowsWhereCodesWereFoundOnlyWhenAskedFor) {
    enum Decoder { Stored, Pending, Freeze };
    struct Case {
        Decoder decoder;
        bool alertOnMIL, redScanner, alreadyListed;
        const char* section;  // nullptr: no alert
    } cases[] = {
        {Stored, true, false, false, "In Trouble Code"},
        {Pending, true, false, false, "In Pending Code"},
        {Freeze, true, false, false, "In Freeze Frame"},
        {Stored, true, true, false, "In Trouble Code"},
        {Freeze, true, true, false, nullptr},
        {Stored, true, false, true, nullptr},
        {Stored, false, false, false, nullptr},
        {Pending, false, false, false, nullptr},
        {Freeze, false, false, false, nullptr},
    };
    for (const Case& c : cases) {
        Codes s;
        s.f.lstCodes.addItem(c.alreadyListed ? "P0133" : "P0999");
        s.f.mnuViewRedScanner.setChecked(c.redScanner);
        s.t->AlertOnMIL = c.alertOnMIL;
        std::vector<int> bytes = Pairs({0x0133});
        if (c.decoder == Stored) s.reply(kStored, bytes);
        if (c.decoder == Pending) s.reply(kPending, bytes);
        if (c.decoder == Freeze) s.freezeReply(bytes);
        FrmAlertMIL& alert = s.t->frmAlertMIL();
        EXPECT_EQ(alert.visible(), c.section != nullptr) << c.decoder << " " << c.alertOnMIL;
        if (!c.section) continue;
        EXPECT_EQ(alert.lblCodeSection[0].text(), c.section);
    }
}

// Everything a clear answer wipes, filled in.
void FillCodeData(Codes& s) {
    s.reply(kStored, Pairs({0x0133, 0x0171}));
    s.reply(kPending, Pairs({0x0300}));
    s.freezeReply(Pairs({0x0420}));
    for (Field* field : FreezeFrameFields(*s.t))
        field->setText("1");
    s.f.imgMIL.setPicture(kImgRed);
}

TEST(ClearReply, OnlyA44AnswerWipesTheCodeData) {
    struct Case {
        std::vector<int> bytes;
        bool timerRunning;
        bool wipes;
    } cases[] = {
        {{0x44}, true, true},
        {{0x44}, false, true},  // late: the failure message has already been shown
        {{0x44, 0x00, 0x00}, true, true},
        {{0x7F, 0x04, 0x11}, true, false},
        {{0x43}, true, false},
        {{}, true, false},
    };
    for (const Case& c : cases) {
        Codes s;
        FillCodeData(s);
        c.timerRunning ? s.f.ClearCodeTimer.start() : s.f.ClearCodeTimer.stop();
        s.clearReply(c.bytes);
        FrmMain& f = s.f;
        std::string what = c.bytes.empty() ? "empty" : hex2(c.bytes[0]);
        EXPECT_EQ(f.ClearCodeTimer.enabled(), c.timerRunning && !c.wipes) << what;
        EXPECT_EQ(f.lstCodes.count() == 0, c.wipes) << what;
        EXPECT_EQ(f.lstPendingCodes.count() == 0, c.wipes) << what;
        EXPECT_EQ(f.lstFreezeCodes.count() == 0, c.wipes) << what;
        EXPECT_EQ(f.gridTroubleCode.text(1, 1).empty(), c.wipes) << what;
        EXPECT_EQ(f.gridTroubleCode.text(2, 3).empty(), c.wipes) << what;
        EXPECT_EQ(f.gridPending.text(1, 1).empty(), c.wipes) << what;
        EXPECT_EQ(f.cmdPrintFFData.enabled(), !c.wipes) << what;
        EXPECT_EQ(f.mnuFilePrintFF.enabled(), !c.wipes) << what;
        EXPECT_EQ(f.imgMIL.picture(), c.wipes ? kImgNotConnected : kImgRed) << what;
        for (Field* field : FreezeFrameFields(*s.t))
            EXPECT_EQ(field->text(), c.wipes ? "N/A" : "1") << what << " " << field->name();
        // The grids are formatted for the next codes either way.
        EXPECT_EQ(f.gridTroubleCode.text(0, 3) + f.gridPending.text(0, 2),
                  "DESCRIPTIONDESCRIPTION");
    }
}

TEST(ClearReply, TheRecorderIsHiddenWhileRecordingOrPlayingWhateverTheAnswer) {
    struct Case {
        bool recording, playing;
        bool hidden;
    } cases[] = {{true, false, true}, {false, true, true}, {false, false, false}};
    for (const Case& c : cases) {
        Codes s;
        auto recorder = std::make_unique<Screen>(s.t.loop, "frmRecorder", "Recorder");
        Screen* frmRecorder = recorder.get();
        s.t->addScreen(std::move(recorder));
        frmRecorder->show();
        s.t->Recording = c.recording;
        s.t->PlayingLog = c.playing;
        s.clearReply({0x7F});
        EXPECT_EQ(frmRecorder->visible(), !c.hidden);
    }
}

TEST(RequestTimer, UnansweredRequestsLoseTheirCodesAndKeepTheOthers) {
    struct Case {
        bool pending, freeze, trouble;  // answered?
    } cases[] = {
        {true, true, true},  {false, true, true},   {true, false, true},
        {true, true, false}, {false, false, false},
    };
    for (const Case& c : cases) {
        Codes s;
        s.reply(kStored, Pairs({0x0133, 0x1100}));
        s.reply(kPending, Pairs({0x0300}));
        s.freezeReply(Pairs({0x0171}));
        s.t->PendingAnswered = c.pending;
        s.t->FFCodeAnswered = c.freeze;
        s.t->TroubleAnswered = c.trouble;
        RequestTimerElapsed(*s.t);
        Grid& g = s.f.gridTroubleCode;
        std::string what =
            std::to_string(c.pending) + std::to_string(c.freeze) + std::to_string(c.trouble);
        EXPECT_EQ(s.f.lstPendingCodes.count(), c.pending ? 1 : 0) << what;
        EXPECT_EQ(s.f.gridPending.text(1, 1), c.pending ? "P0300" : "") << what;
        EXPECT_EQ(s.f.lstFreezeCodes.count(), c.freeze ? 1 : 0) << what;
        EXPECT_EQ(g.text(1, 1), c.freeze ? "P0171" : "") << what;
        EXPECT_EQ(g.text(1, 2), c.freeze ? "FF" : "") << what;
        EXPECT_EQ(s.f.lstCodes.count(), c.trouble ? 2 : 0) << what;
        std::vector<std::string> stored{g.text(2, 1), g.text(2, 2), g.text(2, 3), g.text(3, 1)};
        std::vector<std::string> kept{
            "P0133", "TC", "Oxygen Sensor Circuit Slow Response (Bank 1 Sensor 1)", "P1100"};
        EXPECT_EQ(stored, c.trouble ? kept : std::vector<std::string>(4)) << what;
        EXPECT_EQ(g.text(0, 2), "TYPE") << what;
    }
}

}  // namespace
}  // namespace ketrel
