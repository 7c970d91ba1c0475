#include "link/log_frames.h"

namespace ketrel {
namespace {

bool IsSpace(char c) {
    return c == ' ' || c == '\t';
}

LogLine Malformed(std::string problem) {
    LogLine l;
    l.kind = LogLine::Kind::Malformed;
    l.problem = std::move(problem);
    return l;
}

}  // namespace

LogLine ParseLogLine(std::string_view line) {
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    for (char c : line) {
        auto u = static_cast<unsigned char>(c);
        if ((u < 0x20 && c != '\t') || u >= 0x7F)
            return Malformed("unreadable characters (not a text log?)");
    }
    while (!line.empty() && IsSpace(line.front()))
        line.remove_prefix(1);
    while (!line.empty() && IsSpace(line.back()))
        line.remove_suffix(1);
    if (line.empty()) return {};
    LogLine out;
    out.kind = LogLine::Kind::Frame;
    if (line.front() == '"') {
        std::size_t close = line.find('"', 1);
        if (close == std::string_view::npos) return Malformed("a quote is left open");
        if (close + 1 != line.size()) return Malformed("text after the closing quote");
        out.frame = std::string(line.substr(1, close - 1));
        return out;
    }
    if (line.find('"') != std::string_view::npos) return Malformed("a stray quote");
    if (line.find(',') != std::string_view::npos) return Malformed("a comma in the frame");
    out.frame = std::string(line);
    return out;
}

bool LogFrameReader::readLine() {
    buffer_.clear();
    tooLong_ = false;
    std::streambuf* sb = in_.rdbuf();
    if (!sb) return false;
    bool any = false;
    for (;;) {
        int c = sb->sbumpc();
        if (c == std::char_traits<char>::eof()) {
            in_.setstate(std::ios::eofbit);
            return any;
        }
        any = true;
        if (c == '\n') return true;
        if (buffer_.size() < maxLine_ + 1)
            buffer_.push_back(char(c));
        else
            tooLong_ = true;
    }
}

bool LogFrameReader::next(LogFrame& frame) {
    while (readLine()) {
        ++line_;
        if (!buffer_.empty() && buffer_.back() == '\r') buffer_.pop_back();
        if (tooLong_ || buffer_.size() > maxLine_) {
            if (onProblem)
                onProblem(line_, "longer than " + std::to_string(maxLine_) + " characters");
            continue;
        }
        LogLine parsed = ParseLogLine(buffer_);
        if (parsed.kind == LogLine::Kind::Malformed) {
            if (onProblem) onProblem(line_, parsed.problem);
            continue;
        }
        if (parsed.kind == LogLine::Kind::Blank) continue;
        frame.line = line_;
        frame.text = std::move(parsed.frame);
        return true;
    }
    return false;
}

}  // namespace ketrel
