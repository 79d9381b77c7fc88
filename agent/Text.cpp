#include "agent/Text.h"

#include <QtCore/QTextCodec>

#include <algorithm>
#include <numeric>

namespace zorcall {

namespace {

constexpr int kLineLimit = 1000;
constexpr std::size_t kMaxExtraDistance = 2;
constexpr std::size_t kMaxSuggestions = 3;
constexpr std::size_t kMinPartOfAName = 3;

std::string lowered(std::string text)
{
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    return text;
}

// Both are in lower case. The third is rounded up, so that exchanged letters of a short name are similar.
bool isSimilar(const std::string& name, const std::string& candidate, std::size_t distance)
{
    if (name.size() >= kMinPartOfAName && candidate.find(name) != std::string::npos)
        return true;
    return 3 * distance <= std::max(name.size(), candidate.size()) + 2;
}

} // namespace

DecodedUtf8 decodeUtf8(const std::string& bytes, QChar replacement)
{
    static const QTextCodec* const codec = QTextCodec::codecForName("UTF-8");
    // A byte order mark is kept.
    QTextCodec::ConversionFlags flags = QTextCodec::IgnoreHeader;
    flags.setFlag(QTextCodec::ConvertInvalidToNull, replacement.isNull());
    QTextCodec::ConverterState state(flags);
    const QString string = codec->toUnicode(bytes.data(), static_cast<int>(bytes.size()), &state);
    // The codec keeps the bytes of a truncated character for the next call.
    return {string + QString(state.remainingChars, replacement), state.invalidChars + state.remainingChars};
}

bool isUtf8(const std::string& text)
{
    return decodeUtf8(text).invalidBytes == 0;
}

std::string oneLine(const std::string& text)
{
    // Invalid bytes become U+0000, a control character, to distinguish them from a valid U+FFFD.
    QString characters = decodeUtf8(text, QChar::Null).string;
    for (QChar& character : characters) {
        if (character.category() == QChar::Other_Control)
            character = QLatin1Char('?');
    }
    const QByteArray line = characters.toUtf8();
    if (line.size() <= kLineLimit)
        return line.toStdString();
    int end = kLineLimit;
    while ((static_cast<unsigned char>(line[end]) & 0xC0u) == 0x80u)
        --end;
    return line.left(end).toStdString() + "...";
}

std::string join(const std::vector<std::string>& parts, const std::string& separator)
{
    std::string joined;
    for (const std::string& part : parts)
        joined += (joined.empty() ? std::string() : separator) + part;
    return joined;
}

std::vector<std::string> nearest(const std::string& name, const std::vector<std::string>& candidates)
{
    std::vector<std::pair<std::size_t, std::string>> ranked;
    for (const std::string& candidate : candidates) {
        const std::size_t distance = editDistance(lowered(name), lowered(candidate));
        if (isSimilar(lowered(name), lowered(candidate), distance))
            ranked.emplace_back(distance, candidate);
    }
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    std::vector<std::string> names;
    for (std::size_t i = 0;
         i < ranked.size() && i < kMaxSuggestions && ranked[i].first <= ranked[0].first + kMaxExtraDistance;
         ++i)
        names.push_back(ranked[i].second);
    return names;
}

std::size_t editDistance(const std::string& left, const std::string& right)
{
    std::vector<std::size_t> row(right.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= left.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= right.size(); ++j) {
            const std::size_t replaced = diagonal + (left[i - 1] == right[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({replaced, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row[right.size()];
}

} // namespace zorcall
