#include "host/machine/JsonLines.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QRegularExpression>

#include <algorithm>
#include <vector>

namespace host {

namespace {

// Bytes before an error in which its key is searched.
constexpr int kKeyDistance = 1 << 16;

// Walks through a valid document and compares the path of each value.
class Search
{
public:
    Search(const QByteArray& json, const QString& path) : json_(json), path_(path) {}

    int line()
    {
        while (at_ < json_.size())
            step();
        return found_ < 0 ? 0 : json_.left(found_).count('\n') + 1;
    }

private:
    struct Level
    {
        QString path;
        bool isArray = false;
        int index = 0;
        bool expectsKey = true;
        QString key = {};
        int keyOffset = 0;
    };

    void step()
    {
        switch (json_.at(at_)) {
        case '{':
        case '[': {
            const QString path = beginValue();
            levels_.push_back({path, json_.at(at_) == '['});
            ++at_;
            break;
        }
        case '}':
        case ']':
            levels_.pop_back();
            ++at_;
            break;
        case ',':
            ++levels_.back().index;
            levels_.back().expectsKey = true;
            ++at_;
            break;
        case '"':
            readString();
            break;
        case ':':
        case ' ':
        case '\t':
        case '\r':
        case '\n':
            ++at_;
            break;
        default:
            readScalar();
        }
    }

    // Records the offset if this is the wanted value. Returns the value's path.
    QString beginValue()
    {
        if (levels_.empty())
            return QString();
        const Level& level = levels_.back();
        const QString path = level.isArray ? QStringLiteral("%1[%2]").arg(level.path).arg(level.index)
                             : level.path.isEmpty() ? level.key
                                                    : level.path + QLatin1Char('.') + level.key;
        if (path == path_)
            found_ = level.isArray ? at_ : level.keyOffset;
        return path;
    }

    void readString()
    {
        const bool isKey = !levels_.empty() && !levels_.back().isArray && levels_.back().expectsKey;
        const int begin = at_;
        if (!isKey)
            beginValue();
        for (++at_; at_ < json_.size() && json_.at(at_) != '"'; ++at_) {
            if (json_.at(at_) == '\\')
                ++at_;
        }
        ++at_;
        if (!isKey)
            return;
        levels_.back().key = decoded(json_.mid(begin, at_ - begin));
        levels_.back().keyOffset = begin;
        levels_.back().expectsKey = false;
    }

    static QString decoded(const QByteArray& quoted)
    {
        return QJsonDocument::fromJson('[' + quoted + ']').array().at(0).toString();
    }

    void readScalar()
    {
        beginValue();
        while (at_ < json_.size() && !QByteArray(",]} \t\r\n").contains(json_.at(at_)))
            ++at_;
    }

    const QByteArray& json_;
    const QString& path_;
    std::vector<Level> levels_;
    int at_ = 0;
    int found_ = -1;
};

// The last key before the offset; empty if no key precedes it.
QString keyBefore(const QByteArray& json, int offset)
{
    static const QRegularExpression key(QStringLiteral("\"([^\"\\n]{1,64})\"\\s*:"));
    const int begin = std::max(0, offset - kKeyDistance);
    auto found = key.globalMatch(QString::fromUtf8(json.mid(begin, offset - begin)));
    QString last;
    while (found.hasNext())
        last = found.next().captured(1);
    return last;
}

} // namespace

int lineOfPath(const QByteArray& json, const QString& path)
{
    return Search(json, path).line();
}

QString placeOfOffset(const QByteArray& json, int offset)
{
    const int line = json.left(offset).count('\n') + 1;
    const QString key = keyBefore(json, offset);
    return key.isEmpty() ? QStringLiteral("line %1").arg(line)
                         : QStringLiteral("line %1, near \"%2\"").arg(line).arg(key);
}

} // namespace host
