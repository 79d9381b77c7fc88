#pragma once

#include <QtCore/QMetaType>
#include <QtCore/QString>

#include <vector>

namespace host {

/// A text of the host: in English for the log, the transcript and the agent, and in the language of the
/// window for its user. Both come from one pattern, so neither is ever parsed to get the other.
///
/// A pattern is a whole sentence or title in English with the placeholders %1 to %3. It is marked with
/// QT_TRANSLATE_NOOP for the context "Sandbox", which is how lupdate finds it. A plain value; any thread.
class Text
{
public:
    /// The empty text.
    Text() = default;
    /// @p pattern must outlive the text, as a literal does.
    Text(const char* pattern, std::vector<Text> arguments = {});
    /// A name, a label or a figure: the same in every language.
    Text(const QString& data) : data_(data) {}

    /// An English text that has come back from the library. It is translated if it is a pattern without
    /// placeholders, and shown unchanged otherwise.
    static Text returned(const QString& english);

    bool isEmpty() const { return pattern_ == nullptr && data_.isEmpty(); }
    QString english() const;
    /// In the language of the translators that are installed now.
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
