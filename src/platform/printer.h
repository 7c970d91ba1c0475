#pragma once
#include <string>
#include <vector>

namespace ketrel {

// One text of a printed page, placed in points (1/72 inch) from the page's top left; a width
// above 0 wraps the text within it.
struct PageText {
    std::string name;  // the field it comes from, for tests and for finding it again
    std::string text;
    double x = 0, y = 0, width = 0;
    double size = 10;  // point size
    bool bold = false;
    bool center = false;  // centred in its width
};

// A page as the logic computes it: its texts in reading order.
struct PrintPage {
    std::string title;  // the print job's name
    std::vector<PageText> items;
};

// Where pages go: the desktop's printer or a PDF file; tests record them.
class PagePrinter {
  public:
    virtual ~PagePrinter() = default;
    // False when the page was not printed (no printer, cancelled, write error).
    virtual bool printPage(const PrintPage& page) = 0;
};

// A printer for tests: keeps every page it is given.
class RecordingPrinter : public PagePrinter {
  public:
    bool printPage(const PrintPage& page) override {
        pages.push_back(page);
        return works;
    }
    std::vector<PrintPage> pages;
    bool works = true;
};

}  // namespace ketrel
