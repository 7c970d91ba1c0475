// The log catalogue's search over rows and a word from the input. The first byte picks the
// search method (Name, Vin, Plate, or none typed); then come lines: the search word, then one
// catalogue row per line with its ten columns separated by tabs. The table is refilled for
// every input, the catalogue screen opened over it, the search pressed, and the log found is
// opened for replay.
#include <array>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <string_view>

#include "fuzz_rig.h"
#include "platform/sqlite_db.h"
#include "recording/recorded_log.h"
#include "recording/recorder.h"
#include "screens/frm_recorded_log.h"

namespace ketrel::fuzz {
namespace {

constexpr std::size_t kMaxRows = 64;

// The shipped, empty catalogue in a temporary application folder, with a connection of our
// own that refills it.
struct Catalogue {
    Catalogue() {
        App& a = *f;
        a.addScreen(std::make_unique<FrmRecordedLog>(a.loop()));
        InstallRecordedLog(a);
        InstallRecorder(a);
        std::filesystem::create_directories(f.dir / "System");
        // A row named "drive" has its log in place, so opening it goes all the way.
        std::filesystem::create_directories(f.dir / "Log");
        std::ofstream(f.dir / "Log" / "drive.log") << "\"V486B10410C1AF8\"\r\n";
        std::ifstream schema(std::string(KETREL_DATA_DIR) + "/db/LogRecords.sql");
        db.open(f.dir / "System" / "LogRecords.db", true);
        db.execScript(std::string(std::istreambuf_iterator<char>(schema), {}));
        db.execScript("PRAGMA journal_mode=MEMORY; PRAGMA synchronous=OFF;");
    }
    FuzzApp f{"catalogue_search"};
    SqliteDb db;
};

// The text up to the next separator, and the rest after it.
std::string_view cut(std::string_view& text, char separator) {
    const std::size_t at = text.find(separator);
    std::string_view head = text.substr(0, at);
    text = at == std::string_view::npos ? std::string_view() : text.substr(at + 1);
    return head;
}

void refill(SqliteDb& db, std::string_view rows) {
    db.exec("BEGIN");
    db.exec("DELETE FROM LogRecords");
    for (std::size_t n = 0; !rows.empty() && n < kMaxRows; ++n) {
        std::string_view line = cut(rows, '\n');
        std::vector<SqlValue> values;
        for (int c = 0; c < 10; ++c)
            values.emplace_back(std::string(cut(line, '\t')));
        db.exec("INSERT INTO LogRecords VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)", values);
    }
    db.exec("COMMIT");
}

}  // namespace
}  // namespace ketrel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace ketrel;
    static fuzz::Catalogue catalogue;
    if (size == 0) return 0;
    std::string_view text(reinterpret_cast<const char*>(data + 1), size - 1);
    const std::string word(fuzz::cut(text, '\n'));
    fuzz::refill(catalogue.db, text);

    App& app = *catalogue.f;
    FrmRecordedLog& s = *RecordedLogScreen(app);
    s.show();
    if (data[0] % 4 < 3) {
        s.cmbSearchMethod.setListIndex(data[0] % 4);
    } else {
        s.cmbSearchMethod.setText("");
    }
    s.txtSearchWord.setText(word);
    s.cmdSearch.click();
    s.cmdPlay.click();
    s.unload();
    app.unloadScreens(std::array{"frmRecorder"});
    return 0;
}
