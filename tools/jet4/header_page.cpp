#include "jet4/header_page.h"

#include "jet4/format.h"

#include <array>
#include <cstring>
#include <utility>

namespace jet4 {

using namespace format;

namespace {

constexpr int kVersionOffset = 0x14;
constexpr std::uint8_t kJet3 = 0x00;
constexpr std::uint8_t kJet4 = 0x01;
constexpr int kScrambledStart = 0x18;
constexpr int kJet3ScrambledLength = 126;
constexpr int kJet4ScrambledLength = 128;
constexpr int kCodePageOffset = 0x3c;
constexpr int kDatabaseKeyOffset = 0x3e;    // zero: pages are not encrypted
constexpr int kJet3SortOrderOffset = 0x3a;  // two bytes in Jet 3, four in Jet 4
constexpr int kJet4SortOrderOffset = 0x6e;
constexpr int kCreatedOffset = 0x72;
constexpr std::uint16_t kWesternCodePage = 1252;
constexpr std::uint32_t kGeneralSortOrder = 0x0409;
constexpr std::uint32_t kHeaderKey = 0x6b39dac7;

}  // namespace

void rc4Apply(const QByteArray& key, char* data, int length) {
    std::array<std::uint8_t, 256> s;
    for (int i = 0; i < 256; ++i)
        s[i] = std::uint8_t(i);
    for (int i = 0, j = 0; i < 256; ++i) {
        j = (j + s[i] + std::uint8_t(key[i % key.size()])) & 0xff;
        std::swap(s[i], s[j]);
    }
    for (int n = 0, i = 0, j = 0; n < length; ++n) {
        i = (i + 1) & 0xff;
        j = (j + s[i]) & 0xff;
        std::swap(s[i], s[j]);
        data[n] = char(std::uint8_t(data[n]) ^ s[(s[i] + s[j]) & 0xff]);
    }
}

QByteArray headerPage(Format format, double createdJetDate) {
    const bool jet3 = format == Format::Jet3;
    QByteArray page(layoutOf(format).pageSize, '\0');
    page[0] = char(kHeaderPage);
    page[1] = 0x01;
    std::memcpy(page.data() + 4, "Standard Jet DB", 16);
    page[kVersionOffset] = char(jet3 ? kJet3 : kJet4);
    put16(page, kCodePageOffset, kWesternCodePage);
    put32(page, kDatabaseKeyOffset, 0);
    if (jet3) {
        put16(page, kJet3SortOrderOffset, std::uint16_t(kGeneralSortOrder));
    } else {
        put32(page, kJet4SortOrderOffset, kGeneralSortOrder);
        putDouble(page, kCreatedOffset, createdJetDate);
    }

    QByteArray key(4, '\0');
    put32(key, 0, kHeaderKey);
    rc4Apply(key, page.data() + kScrambledStart,
             jet3 ? kJet3ScrambledLength : kJet4ScrambledLength);
    return page;
}

}  // namespace jet4
