#pragma once
#include <cstddef>
#include <functional>
#include <istream>
#include <string>
#include <string_view>

namespace ketrel {

// What one line of a log holds.
struct LogLine {
    enum class Kind { Frame, Blank, Malformed };
    Kind kind = Kind::Blank;
    std::string frame;    // the frame text, for Kind::Frame
    std::string problem;  // why the line can't be read, for Kind::Malformed
};

// Reads one line of a log, without its line end: a frame in double quotes as the recorder
// writes it, or a bare frame. Blank lines are blank; control characters, a quote left open,
// text after the closing quote and a stray quote or comma in a bare frame are malformed.
LogLine ParseLogLine(std::string_view line);

// A frame of a log with the number of the line it came from (from 1).
struct LogFrame {
    long line = 0;
    std::string text;
};

// Reads the frames of a log one after the other. Lines end in CR LF or LF; lines that can't
// be read, including lines longer than the limit, are skipped and told to onProblem.
class LogFrameReader {
  public:
    static constexpr std::size_t kDefaultMaxLine = 4096;
    explicit LogFrameReader(std::istream& in, std::size_t maxLine = kDefaultMaxLine)
        : in_(in), maxLine_(maxLine) {}

    // The next frame; false at the end of the input.
    bool next(LogFrame& frame);
    // Lines read so far.
    long lines() const { return line_; }
    // Runs for every line skipped, with its number and the reason.
    std::function<void(long line, const std::string& problem)> onProblem;

  private:
    // Reads one line into buffer_; false at the end of the input. Sets tooLong_.
    bool readLine();

    std::istream& in_;
    std::size_t maxLine_;
    std::string buffer_;
    bool tooLong_ = false;
    long line_ = 0;
};

}  // namespace ketrel
