#pragma once

#include <QtCore/QMetaType>
#include <QtCore/QString>

#include <vector>

namespace host {

/// A string of the host: in English for the log, the transcript and the agent, and in the language of the
/// window for its user. Both come from one pattern, so no code parses one to get the other.
///
/// A pattern is a whole sentence or title in English with the placeholders %1 to %3, marked with
/// QT_TRANSLATE_NOOP for the context "Sandbox" so that lupdate finds it. A plain value; any thread.
class Text
{
public:
    /// The empty string.
    Text() = default;
    /// @p pattern must outlive the object, as a literal does.
    Text(const char* pattern, std::vector<Text> arguments = {});
    /// A name, a label or a number: the same in every language.
    Text(const QString& data) : data_(data) {}

    /// An English string that the library returned. It is translated if it is a pattern without placeholders.
    static Text returned(const QString& english);

    bool isEmpty() const { return pattern_ == nullptr && data_.isEmpty(); }
    QString english() const;
    /// In the language of the installed translators.
    QString translated() const;

    friend bool operator==(const Text& a, const Text& b) { return a.english() == b.english(); }
    friend bool operator!=(const Text& a, const Text& b) { return !(a == b); }

private:
    QString filled(const QString& pattern, QString (Text::*language)() const) const;

    const char* pattern_ = nullptr; ///< null for data
    QString data_;
    bool returned_ = false;
    std::vector<Text> arguments_;
};

} // namespace host

Q_DECLARE_METATYPE(host::Text)
