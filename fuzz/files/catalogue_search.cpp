// The log catalogue's search over rows and a word from the input. The first byte picks the
// search method (Name, Vin, Plate, or none typed, which searches by name as the catalogue
// screen does); then come lines: the search word, then one catalogue row per line with its
// ten columns separated by tabs. The table is refilled for every input through a connection
// of our own; the catalogue is opened once and held open, read whole and searched, and the
// row found is taken as far as the log file it names.
//
// The catalogue screen opens the catalogue anew for each fill and each search; most of that
// time goes to reading the schema, so running the screen per input made this target about
// ten times slower without reaching more of the code that handles the rows.
#include <array>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <string_view>
#include <vector>

#include <sqlite3.h>

#include "fuzz_rig.h"
#include "platform/sqlite_db.h"
#include "platform/text_convert.h"
#include "recording/log_catalogue.h"
#include "recording/log_file.h"

namespace ketrel::fuzz {
namespace {

// Enough rows for a search to pass over several before its hit.
constexpr std::size_t kMaxRows = 16;
const std::array<std::string, 4> kMethods{"Name", "Vin", "Plate", ""};

// The shipped, empty catalogue in a temporary application folder, and a connection of our
// own whose statements are made once.
struct Catalogue {
    Catalogue() {
        std::filesystem::create_directories(dir / "System");
        const std::filesystem::path file = dir / "System" / "LogRecords.db";
        {
            SqliteDb maker;
            std::ifstream schema(std::string(KETREL_DATA_DIR) + "/db/LogRecords.sql");
            maker.open(file, true);
            maker.execScript(std::string(std::istreambuf_iterator<char>(schema), {}));
        }
        if (sqlite3_open(file.c_str(), &db) != SQLITE_OK ||
            sqlite3_exec(db, "PRAGMA journal_mode=MEMORY; PRAGMA synchronous=OFF;", nullptr,
                         nullptr, nullptr) != SQLITE_OK ||
            sqlite3_prepare_v2(db, "INSERT INTO LogRecords VALUES (?,?,?,?,?,?,?,?,?,?)", -1,
                               &insert, nullptr) != SQLITE_OK ||
            !catalogue.open(dir))
            __builtin_trap();
    }
    std::filesystem::path dir = FuzzFolder("catalogue_search");
    sqlite3* db = nullptr;
    sqlite3_stmt* insert = nullptr;
    LogCatalogue catalogue;
};

// The text up to the next separator, and the rest after it.
std::string_view cut(std::string_view& text, char separator) {
    const std::size_t at = text.find(separator);
    std::string_view head = text.substr(0, at);
    text = at == std::string_view::npos ? std::string_view() : text.substr(at + 1);
    return head;
}

void refill(Catalogue& c, std::string_view rows) {
    sqlite3_exec(c.db, "BEGIN; DELETE FROM LogRecords;", nullptr, nullptr, nullptr);
    for (std::size_t n = 0; !rows.empty() && n < kMaxRows; ++n) {
        std::string_view line = cut(rows, '\n');
        for (int col = 1; col <= 10; ++col) {
            const std::string_view cell = cut(line, '\t');
            sqlite3_bind_text(c.insert, col, cell.data(), int(cell.size()), SQLITE_TRANSIENT);
        }
        sqlite3_step(c.insert);
        sqlite3_reset(c.insert);
    }
    sqlite3_exec(c.db, "COMMIT", nullptr, nullptr, nullptr);
}

}  // namespace
}  // namespace ketrel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace ketrel;
    static fuzz::Catalogue c;
    if (size == 0) return 0;
    std::string_view text(reinterpret_cast<const char*>(data + 1), size - 1);
    const std::string word = UpperCase(std::string(fuzz::cut(text, '\n')));
    fuzz::refill(c, text);

    std::vector<LogRecord> rows;
    if (!c.catalogue.rows(rows)) __builtin_trap();
    const std::string& method = fuzz::kMethods[data[0] % 4];
    bool found = false;
    LogRecord hit;
    if (!c.catalogue.find(method.empty() ? "Name" : method, word, found, hit)) __builtin_trap();
    // A hit is one of the rows read whole, and opening it looks for its log only inside Log/.
    if (found) {
        bool among = false;
        for (const LogRecord& r : rows)
            among = among || (r.Name == hit.Name && r.Vin == hit.Vin && r.Plate == hit.Plate);
        if (!among) __builtin_trap();
        if (auto path = SafeLogFilePath(c.dir, hit.Name);
            path && path->parent_path() != c.dir / "Log")
            __builtin_trap();
    }
    return 0;
}
