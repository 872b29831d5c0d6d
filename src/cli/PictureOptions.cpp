#include "cli/PictureOptions.h"

#include "formats/FileResult.h"
#include "platform/StringTable.h"

#include <charconv>
#include <cstdio>

std::optional<int> ParseInt(const std::string& text) {
    int value = 0;
    const char* end = text.data() + text.size();
    const auto [next, error] = std::from_chars(text.data(), end, value);
    if (text.empty() || error != std::errc{} || next != end) {
        return std::nullopt;
    }
    return value;
}

std::optional<LoadLimitSize> ParseMaxSize(const std::string& text) {
    const auto comma = text.find(',');
    if (comma == std::string::npos) {
        return std::nullopt;
    }
    const auto width = ParseInt(text.substr(0, comma));
    const auto height = ParseInt(text.substr(comma + 1));
    const auto valid = [](const std::optional<int>& v) {
        return v && *v >= 1 && *v <= LoadLimits::kMostRaised;
    };
    if (!valid(width) || !valid(height)) {
        return std::nullopt;
    }
    return LoadLimitSize{*width, *height};
}

void PrintFileError(int result, const std::string& fallback) {
    const std::string_view text = result == kFileOutOfMemory
                                      ? platform::LoadString(platform::IDS_MEMORY_NOT_ENOUGH)
                                      : std::string_view(fallback);
    std::fprintf(stderr, "%.*s\n", static_cast<int>(text.size()), text.data());
}
