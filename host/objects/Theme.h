#pragma once

#include <QtCore/QObject>
#include <QtGui/QColor>

#include <optional>

namespace host {

/// The colours of the window.
enum class ThemeMode { System, Light, Dark };

/// "system", "light" or "dark".
QString themeName(ThemeMode mode);
/// The mode of that name; empty for an unknown name.
std::optional<ThemeMode> themeNamed(const QString& name);

/// The window's colours, fonts and sizes, for the QML files as `theme`. ThemeMode::System follows the
/// application's palette. Application thread.
class Theme : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString mode READ modeName WRITE setModeName NOTIFY modeChanged)
    Q_PROPERTY(bool dark READ isDark NOTIFY changed)
    Q_PROPERTY(QColor window READ window NOTIFY changed)
    Q_PROPERTY(QColor surface READ surface NOTIFY changed)
    Q_PROPERTY(QColor raised READ raised NOTIFY changed)
    Q_PROPERTY(QColor border READ border NOTIFY changed)
    Q_PROPERTY(QColor text READ text NOTIFY changed)
    Q_PROPERTY(QColor muted READ muted NOTIFY changed)
    Q_PROPERTY(QColor accent READ accent NOTIFY changed)
    Q_PROPERTY(QColor accentText READ accentText NOTIFY changed)
    Q_PROPERTY(QColor accentSurface READ accentSurface NOTIFY changed)
    Q_PROPERTY(QColor good READ good NOTIFY changed)
    Q_PROPERTY(QColor goodSurface READ goodSurface NOTIFY changed)
    Q_PROPERTY(QColor bad READ bad NOTIFY changed)
    Q_PROPERTY(QColor badSurface READ badSurface NOTIFY changed)
    Q_PROPERTY(QColor warn READ warn NOTIFY changed)
    Q_PROPERTY(QColor warnSurface READ warnSurface NOTIFY changed)
    Q_PROPERTY(QColor shade READ shade NOTIFY changed)
    Q_PROPERTY(int small READ small NOTIFY sizesChanged)
    Q_PROPERTY(int normal READ normal NOTIFY sizesChanged)
    Q_PROPERTY(int heading READ heading NOTIFY sizesChanged)
    Q_PROPERTY(int title READ title NOTIFY sizesChanged)
    Q_PROPERTY(double unit READ unit NOTIFY sizesChanged)
    Q_PROPERTY(QString font READ font CONSTANT)
    Q_PROPERTY(QString fixedFont READ fixedFont CONSTANT)

public:
    explicit Theme(ThemeMode mode = ThemeMode::System, QObject* parent = nullptr);

    ThemeMode mode() const { return mode_; }
    void setMode(ThemeMode mode);
    QString modeName() const { return themeName(mode_); }
    /// An unknown name has no effect.
    void setModeName(const QString& name);
    bool isDark() const { return dark_; }

    QColor window() const;  ///< background
    QColor surface() const; ///< panels
    QColor raised() const;  ///< buttons and fields on a panel
    QColor border() const;
    QColor text() const;
    QColor muted() const; ///< secondary text
    QColor accent() const;
    QColor accentText() const; ///< on accent
    QColor accentSurface() const;
    QColor good() const; ///< text, readable on goodSurface and on surface
    QColor goodSurface() const;
    QColor bad() const;
    QColor badSurface() const;
    QColor warn() const;
    QColor warnSurface() const;
    QColor shade() const; ///< between the window and a dialog

    // Text sizes in pixels. They follow the size of the application's font.
    int small() const; ///< secondary text
    int normal() const { return normal_; }
    int heading() const; ///< titles of panels and disks
    int title() const;   ///< titles of dialogs and of the window
    /// Unit of row heights and column widths: 1 if the normal text has 13 pixels.
    double unit() const;

    QString font() const { return font_; }
    QString fixedFont() const { return fixedFont_; }

    /// The colour of a file system in the disk bars: of its used part if @p used, else of the strip above it.
    Q_INVOKABLE QColor fileSystem(const QString& name, bool used) const;

Q_SIGNALS:
    void changed();
    void sizesChanged();
    void modeChanged();

private:
    void update();
    void updateSizes();

    ThemeMode mode_;
    bool dark_ = false;
    int normal_ = 0;
    QString font_;
    QString fixedFont_;
};

/// Sets a usual size for the application's font on platforms without font settings. Qt's default is larger
/// there.
void setUsualTextSize();

} // namespace host
