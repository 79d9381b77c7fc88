#include "host/objects/MultiLanguage.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>

// The macro declares a function of the global namespace.
static void registerCatalogues()
{
    Q_INIT_RESOURCE(translations);
}

namespace host {

namespace {

const QString kFolder = QStringLiteral(":/translations");
const QString kEnglish = QStringLiteral("en");
// The catalogue of the window, of which there is one for each language.
const QString kWindow = QStringLiteral("zorhost_");
// The catalogue of the library, which a host of another team loads as well.
const QString kLibrary = QStringLiteral("aibridge_");

} // namespace

MultiLanguage::MultiLanguage(const QString& language, QObject* parent) : QObject(parent), language_(language)
{
    registerCatalogues();
    install();
}

MultiLanguage::~MultiLanguage() = default;

QStringList MultiLanguage::languages()
{
    registerCatalogues();
    QStringList codes{kEnglish};
    const QStringList files =
        QDir(kFolder).entryList({kWindow + QStringLiteral("*.qm")}, QDir::Files, QDir::Name);
    for (const QString& file : files) {
        const QString code = file.mid(kWindow.size()).section(QLatin1Char('.'), 0, 0);
        if (!codes.contains(code))
            codes.append(code);
    }
    return codes;
}

void MultiLanguage::setLanguage(const QString& language)
{
    language_ = language;
    install();
    Q_EMIT sigCurrentLanguageChanged();
}

void MultiLanguage::changeLanguage()
{
    const QStringList codes = languages();
    setLanguage(codes.at((codes.indexOf(language_) + 1) % codes.size()));
}

// A translator is loaded before it is installed, because the scan's thread may read installed translators.
// Its destructor removes it under Qt's lock.
void MultiLanguage::install()
{
    std::vector<std::unique_ptr<QTranslator>> next;
    for (const QString& catalogue : {kLibrary, kWindow}) {
        next.push_back(std::make_unique<QTranslator>());
        if (!next.back()->load(catalogue + language_, kFolder))
            qWarning("no catalogue %s%s", qPrintable(catalogue), qPrintable(language_));
        QCoreApplication::installTranslator(next.back().get());
    }
    translators_.swap(next);
}

} // namespace host
