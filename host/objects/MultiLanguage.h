#pragma once

#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <QtCore/QTranslator>

#include <memory>
#include <vector>

namespace host {

/// The context property `multilanguage`: the language of the window and of recommendations.
///
/// The catalogues are resources of the program. Installing one takes effect at once for every thread, so a
/// scan that runs during the change may make its record in either language. Application thread.
class MultiLanguage : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString language READ language NOTIFY sigCurrentLanguageChanged)

public:
    /// Installs the catalogues of @p language, one of languages().
    explicit MultiLanguage(const QString& language, QObject* parent = nullptr);
    ~MultiLanguage() override;

    /// The codes of all languages, such as "de"; English, the default, comes first.
    static QStringList languages();

    QString language() const { return language_; }
    /// Installs the catalogues of another language and emits sigCurrentLanguageChanged().
    void setLanguage(const QString& language);
    /// The window's language button: the next language of languages(), after the last the first.
    Q_INVOKABLE void changeLanguage();

Q_SIGNALS:
    void sigCurrentLanguageChanged();

private:
    void install();

    QString language_;
    std::vector<std::unique_ptr<QTranslator>> translators_;
};

} // namespace host
