#include "host/objects/Theme.h"

#include <QtCore/QMap>
#include <QtGui/QFont>
#include <QtGui/QFontDatabase>
#include <QtGui/QFontInfo>
#include <QtGui/QGuiApplication>
#include <QtGui/QPalette>

namespace host {

namespace {

constexpr int kUsualTextSize = 13; // pixels

struct Pair
{
    QRgb light;
    QRgb dark;
};

constexpr Pair kWindow{0xffeef1f5, 0xff14171c};
constexpr Pair kSurface{0xffffffff, 0xff1d2129};
constexpr Pair kRaised{0xfff6f8fa, 0xff272d37};
constexpr Pair kBorder{0xffd3dae3, 0xff38404d};
constexpr Pair kText{0xff1b2430, 0xffe8ecf2};
constexpr Pair kMuted{0xff5a6675, 0xff9fabba};
constexpr Pair kAccent{0xff1f5fd0, 0xff6ea8ff};
constexpr Pair kAccentText{0xffffffff, 0xff0d1626};
constexpr Pair kAccentSurface{0xffe8f0fe, 0xff1c2b47};
constexpr Pair kGood{0xff13713c, 0xff6fd69a};
constexpr Pair kGoodSurface{0xffe3f5ea, 0xff17342a};
constexpr Pair kBad{0xffb3261e, 0xffff9a91};
constexpr Pair kBadSurface{0xfffdebe9, 0xff43201f};
constexpr Pair kWarn{0xff8a5300, 0xfff4c26b};
constexpr Pair kWarnSurface{0xfffff3dc, 0xff3d2f14};
constexpr Pair kShade{0x73141a24, 0x99000000};

struct FileSystemColour
{
    const char* name;
    Pair strip;
    Pair used;
};

// The last row matches every other name.
constexpr FileSystemColour kFileSystems[] = {
    {"NTFS", {0xff2f6fde, 0xff5b97f5}, {0xffc9dcfb, 0xff28447a}},
    {"FAT32", {0xff12876f, 0xff3fc4a5}, {0xffbfe8de, 0xff1d5549}},
    {"FAT16", {0xff12876f, 0xff3fc4a5}, {0xffbfe8de, 0xff1d5549}},
    {"FAT", {0xff12876f, 0xff3fc4a5}, {0xffbfe8de, 0xff1d5549}},
    {"exFAT", {0xff8a4fd0, 0xffb58cf0}, {0xffe2d2f8, 0xff4a3570}},
    {"ReFS", {0xffb8560d, 0xfff09a58}, {0xfff8dcc4, 0xff69401f}},
    {"", {0xff8591a1, 0xff77839a}, {0xffdfe4ea, 0xff3a4250}},
};

QString firstInstalled(const QStringList& wanted, QFontDatabase::SystemFont otherwise)
{
    const QStringList families = QFontDatabase().families();
    for (const QString& family : wanted) {
        if (families.contains(family))
            return family;
    }
    return QFontDatabase::systemFont(otherwise).family();
}

const QMap<QString, ThemeMode> kModes = {{QStringLiteral("system"), ThemeMode::System},
                                         {QStringLiteral("light"), ThemeMode::Light},
                                         {QStringLiteral("dark"), ThemeMode::Dark}};

bool paletteIsDark()
{
    return QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
}

} // namespace

Theme::Theme(ThemeMode mode, QObject* parent)
    : QObject(parent),
      mode_(mode),
      font_(
          firstInstalled({QStringLiteral("Inter"), QStringLiteral("Segoe UI"), QStringLiteral("DejaVu Sans")},
                         QFontDatabase::GeneralFont)),
      fixedFont_(firstInstalled({QStringLiteral("DejaVu Sans Mono"), QStringLiteral("Consolas")},
                                QFontDatabase::FixedFont))
{
    connect(qGuiApp, &QGuiApplication::paletteChanged, this, &Theme::update);
    connect(qGuiApp, &QGuiApplication::fontChanged, this, &Theme::updateSizes);
    update();
    updateSizes();
}

QString themeName(ThemeMode mode)
{
    return kModes.key(mode);
}

std::optional<ThemeMode> themeNamed(const QString& name)
{
    const auto found = kModes.find(name);
    return found == kModes.end() ? std::nullopt : std::optional<ThemeMode>(*found);
}

void Theme::setMode(ThemeMode mode)
{
    if (mode == mode_)
        return;
    mode_ = mode;
    update();
    Q_EMIT modeChanged();
}

void Theme::setModeName(const QString& name)
{
    if (const std::optional<ThemeMode> mode = themeNamed(name))
        setMode(*mode);
}

void Theme::update()
{
    const bool dark = mode_ == ThemeMode::System ? paletteIsDark() : mode_ == ThemeMode::Dark;
    if (dark == dark_)
        return;
    dark_ = dark;
    Q_EMIT changed();
}

void Theme::updateSizes()
{
    const int size = QFontInfo(QGuiApplication::font()).pixelSize();
    const int normal = size > 0 ? size : kUsualTextSize;
    if (normal == normal_)
        return;
    normal_ = normal;
    Q_EMIT sizesChanged();
}

int Theme::small() const
{
    return qRound(normal_ * 12.0 / kUsualTextSize);
}

int Theme::heading() const
{
    return qRound(normal_ * 14.0 / kUsualTextSize);
}

int Theme::title() const
{
    return qRound(normal_ * 18.0 / kUsualTextSize);
}

double Theme::unit() const
{
    return static_cast<double>(normal_) / kUsualTextSize;
}

static QColor pick(const Pair& pair, bool dark)
{
    return QColor::fromRgba(dark ? pair.dark : pair.light);
}

QColor Theme::window() const
{
    return pick(kWindow, dark_);
}
QColor Theme::surface() const
{
    return pick(kSurface, dark_);
}
QColor Theme::raised() const
{
    return pick(kRaised, dark_);
}
QColor Theme::border() const
{
    return pick(kBorder, dark_);
}
QColor Theme::text() const
{
    return pick(kText, dark_);
}
QColor Theme::muted() const
{
    return pick(kMuted, dark_);
}
QColor Theme::accent() const
{
    return pick(kAccent, dark_);
}
QColor Theme::accentText() const
{
    return pick(kAccentText, dark_);
}
QColor Theme::accentSurface() const
{
    return pick(kAccentSurface, dark_);
}
QColor Theme::good() const
{
    return pick(kGood, dark_);
}
QColor Theme::goodSurface() const
{
    return pick(kGoodSurface, dark_);
}
QColor Theme::bad() const
{
    return pick(kBad, dark_);
}
QColor Theme::badSurface() const
{
    return pick(kBadSurface, dark_);
}
QColor Theme::warn() const
{
    return pick(kWarn, dark_);
}
QColor Theme::warnSurface() const
{
    return pick(kWarnSurface, dark_);
}
QColor Theme::shade() const
{
    return pick(kShade, dark_);
}

QColor Theme::fileSystem(const QString& name, bool used) const
{
    const FileSystemColour* row = kFileSystems;
    while (*row->name != '\0' && name.compare(QLatin1String(row->name), Qt::CaseInsensitive) != 0)
        ++row;
    return pick(used ? row->used : row->strip, dark_);
}

void setUsualTextSize()
{
    static const QStringList kWithoutSettings{QStringLiteral("offscreen"), QStringLiteral("minimal")};
    if (!kWithoutSettings.contains(QGuiApplication::platformName()))
        return;
    QFont font = QGuiApplication::font();
    font.setPixelSize(kUsualTextSize);
    QGuiApplication::setFont(font);
}

} // namespace host
