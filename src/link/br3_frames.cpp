#include "link/br3_frames.h"

#include <vector>

namespace ketrel {

std::uint8_t J1850Crc(std::span<const std::uint8_t> bytes) {
    std::uint8_t crc = 0xFF;
    for (std::uint8_t b : bytes) {
        crc ^= b;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 0x80) ? std::uint8_t((crc << 1) ^ 0x1D) : std::uint8_t(crc << 1);
    }
    return std::uint8_t(~crc);
}

std::uint8_t ByteSum(std::span<const std::uint8_t> bytes) {
    unsigned sum = 0;
    for (std::uint8_t b : bytes)
        sum += b;
    return std::uint8_t(sum & 0xFF);
}

std::string Br3Frame(Br3Family family, const Br3Header& wireHeader, const Br3Header& checkHeader,
                     std::initializer_list<std::uint8_t> data, std::uint8_t trailing) {
    std::vector<std::uint8_t> checked(checkHeader.begin(), checkHeader.end());
    checked.insert(checked.end(), data.begin(), data.end());
    const bool j1850 = family == Br3Family::J1850;
    const std::uint8_t check = j1850 ? J1850Crc(checked) : ByteSum(checked);

    std::string frame;
    // The count byte counts everything after itself.
    frame.push_back(char(3 + data.size() + 1 + (j1850 ? 1 : 0)));
    for (std::uint8_t b : wireHeader)
        frame.push_back(char(b));
    for (std::uint8_t b : data)
        frame.push_back(char(b));
    frame.push_back(char(check));
    if (j1850) frame.push_back(char(trailing));
    return frame;
}

std::string Br3Frame(Br3Family family, const Br3Header& header,
                     std::initializer_list<std::uint8_t> data, std::uint8_t trailing) {
    return Br3Frame(family, header, header, data, trailing);
}

std::string KlineFrame(const Br3Header& header, std::initializer_list<std::uint8_t> data) {
    return Br3Frame(Br3Family::IsoKwp, header, data).substr(1);
}

Br3Header HeaderFromText(const std::string& text, const Br3Header& fallback) {
    if (text.size() != 3) return fallback;
    return {std::uint8_t(text[0]), std::uint8_t(text[1]), std::uint8_t(text[2])};
}

std::string HeaderText(const Br3Header& header) {
    return {char(header[0]), char(header[1]), char(header[2])};
}

}  // namespace ketrel
