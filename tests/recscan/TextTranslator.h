#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QStringList>
#include <QtCore/QTranslator>

#include <utility>

/// The translation of a source string by the translator below. Placeholders are kept.
inline QString translated(const QString& source)
{
    return QLatin1Char('<') + source + QLatin1Char('>');
}

/// Translates these source texts in the context QObject, without a disambiguation, and nothing else. In use
/// for the life of this object. Any thread translates, the application thread makes and ends it.
class InstalledTranslator : public QTranslator
{
public:
    explicit InstalledTranslator(QStringList sources) : sources_(std::move(sources))
    {
        QCoreApplication::installTranslator(this);
    }
    ~InstalledTranslator() override { QCoreApplication::removeTranslator(this); }

    QString translate(const char* context, const char* source, const char* disambiguation,
                      int number) const override
    {
        const bool known = qstrcmp(context, "QObject") == 0 && disambiguation == nullptr && number == -1 &&
                           sources_.contains(QString::fromUtf8(source));
        return known ? translated(QString::fromUtf8(source)) : QString();
    }
    bool isEmpty() const override { return sources_.isEmpty(); }

private:
    const QStringList sources_;
};
