#include "rtf/code_page.h"

#include <unicode/ucnv.h>

#include <array>
#include <string>
#include <utility>

namespace rtf {

struct CodePage::Converter {
    UConverter* handle = nullptr;
    ~Converter() {
        if (handle != nullptr) {
            ucnv_close(handle);
        }
    }
};

namespace {

// ICU knows the Windows code pages under one of these names.
UConverter* openConverter(int number) {
    const std::array<std::string, 3> names = {"windows-" + std::to_string(number),
                                              "cp" + std::to_string(number),
                                              "ibm-" + std::to_string(number)};
    if (number == 10000) {
        UErrorCode status = U_ZERO_ERROR;
        return ucnv_open("macintosh", &status);
    }
    for (const std::string& name : names) {
        UErrorCode status = U_ZERO_ERROR;
        UConverter* converter = ucnv_open(name.c_str(), &status);
        if (U_SUCCESS(status) && status != U_AMBIGUOUS_ALIAS_WARNING) {
            return converter;
        }
        if (converter != nullptr) {
            ucnv_close(converter);
        }
    }
    return nullptr;
}

}  // namespace

CodePage::CodePage(int number) : number_(number), converter_(std::make_unique<Converter>()) {
    converter_->handle = openConverter(number);
    if (converter_->handle == nullptr) {
        number_ = 1252;
        converter_->handle = openConverter(1252);
    }
    // Encoding must report a missing character rather than write a substitute.
    UErrorCode status = U_ZERO_ERROR;
    ucnv_setFromUCallBack(converter_->handle, UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                          &status);
}

CodePage::~CodePage() = default;

QString CodePage::decode(const QByteArray& bytes) const {
    if (bytes.isEmpty()) {
        return {};
    }
    std::u16string out(static_cast<std::size_t>(bytes.size()) * 2 + 4, u'\0');
    UErrorCode status = U_ZERO_ERROR;
    ucnv_resetToUnicode(converter_->handle);
    const int32_t length =
        ucnv_toUChars(converter_->handle, out.data(), static_cast<int32_t>(out.size()),
                      bytes.constData(), static_cast<int32_t>(bytes.size()), &status);
    if (U_FAILURE(status)) {
        return {};
    }
    return QString(reinterpret_cast<const QChar*>(out.data()), length);
}

std::optional<QByteArray> CodePage::encode(char32_t character) const {
    std::u16string source;
    if (character > 0xFFFF) {
        const char32_t v = character - 0x10000;
        source = {static_cast<char16_t>(0xD800 + (v >> 10)),
                  static_cast<char16_t>(0xDC00 + (v & 0x3FF))};
    } else {
        source = {static_cast<char16_t>(character)};
    }
    std::array<char, 8> out{};
    UErrorCode status = U_ZERO_ERROR;
    ucnv_resetFromUnicode(converter_->handle);
    const int32_t length =
        ucnv_fromUChars(converter_->handle, out.data(), static_cast<int32_t>(out.size()),
                        source.data(), static_cast<int32_t>(source.size()), &status);
    if (U_FAILURE(status) || length <= 0) {
        return std::nullopt;
    }
    return QByteArray(out.data(), length);
}

int codePageOfCharset(int charset) {
    static const std::array<std::pair<int, int>, 18> table = {{
        {0, 1252},
        {77, 10000},
        {128, 932},
        {129, 949},
        {130, 1361},
        {134, 936},
        {136, 950},
        {161, 1253},
        {162, 1254},
        {163, 1258},
        {177, 1255},
        {178, 1256},
        {186, 1257},
        {204, 1251},
        {222, 874},
        {238, 1250},
        {254, 437},
        {255, 850},
    }};
    for (const auto& [set, page] : table) {
        if (set == charset) {
            return page;
        }
    }
    return 0;
}

}  // namespace rtf
