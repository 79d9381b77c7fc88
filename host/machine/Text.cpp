#include "host/machine/Text.h"

#include <QtCore/QCoreApplication>

#include <utility>

namespace host {

namespace {

constexpr const char* kContext = "Sandbox";

} // namespace

Text::Text(const char* pattern, std::vector<Text> arguments)
    : pattern_(*pattern == '\0' ? nullptr : pattern), arguments_(std::move(arguments))
{
}

Text Text::returned(const QString& english)
{
    Text text(english);
    text.returned_ = true;
    return text;
}

QString Text::english() const
{
    return pattern_ == nullptr ? data_ : filled(QString::fromUtf8(pattern_), &Text::english);
}

QString Text::translated() const
{
    if (pattern_ != nullptr)
        return filled(QCoreApplication::translate(kContext, pattern_), &Text::translated);
    return returned_ && !data_.isEmpty() ? QCoreApplication::translate(kContext, data_.toUtf8().constData())
                                         : data_;
}

// Replaces all placeholders in one pass, because an argument can contain "%1" itself.
QString Text::filled(const QString& pattern, QString (Text::*language)() const) const
{
    const auto argument = [&](std::size_t place) { return (arguments_[place].*language)(); };
    switch (arguments_.size()) {
    case 0:
        return pattern;
    case 1:
        return pattern.arg(argument(0));
    case 2:
        return pattern.arg(argument(0), argument(1));
    default:
        return pattern.arg(argument(0), argument(1), argument(2));
    }
}

} // namespace host
