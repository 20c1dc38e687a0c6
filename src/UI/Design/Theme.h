#pragma once

#include "UI/Design/Palette.h"

#include <QObject>
#include <QtQmlIntegration>

namespace Tavrin {

/// The colours in use, for every view. One a view's engine. Main thread.
class Theme : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool isDark READ isDark NOTIFY changed FINAL)
    Q_PROPERTY(double pixelRatio READ pixelRatio NOTIFY pixelRatioChanged FINAL)
    Q_PROPERTY(QColor window READ window NOTIFY changed FINAL)
    Q_PROPERTY(QColor bar READ bar NOTIFY changed FINAL)
    Q_PROPERTY(QColor card READ card NOTIFY changed FINAL)
    Q_PROPERTY(QColor field READ field NOTIFY changed FINAL)
    Q_PROPERTY(QColor well READ well NOTIFY changed FINAL)
    Q_PROPERTY(QColor raised READ raised NOTIFY changed FINAL)
    Q_PROPERTY(QColor badge READ badge NOTIFY changed FINAL)
    Q_PROPERTY(QColor hover READ hover NOTIFY changed FINAL)
    Q_PROPERTY(QColor hoverBorder READ hoverBorder NOTIFY changed FINAL)
    Q_PROPERTY(QColor pressed READ pressed NOTIFY changed FINAL)
    Q_PROPERTY(QColor text READ text NOTIFY changed FINAL)
    Q_PROPERTY(QColor secondaryText READ secondaryText NOTIFY changed FINAL)
    Q_PROPERTY(QColor placeholderText READ placeholderText NOTIFY changed FINAL)
    Q_PROPERTY(QColor separator READ separator NOTIFY changed FINAL)
    Q_PROPERTY(QColor border READ border NOTIFY changed FINAL)
    Q_PROPERTY(QColor fieldBorder READ fieldBorder NOTIFY changed FINAL)
    Q_PROPERTY(QColor accent READ accent NOTIFY changed FINAL)
    Q_PROPERTY(QColor accentPressed READ accentPressed NOTIFY changed FINAL)
    Q_PROPERTY(QColor accentText READ accentText NOTIFY changed FINAL)
    Q_PROPERTY(QColor destructive READ destructive NOTIFY changed FINAL)
    Q_PROPERTY(QColor onAccent READ onAccent NOTIFY changed FINAL)
    Q_PROPERTY(QColor selection READ selection NOTIFY changed FINAL)
    Q_PROPERTY(QColor green READ green NOTIFY changed FINAL)
    Q_PROPERTY(QColor greenSymbol READ greenSymbol NOTIFY changed FINAL)
    Q_PROPERTY(QColor orangeSymbol READ orangeSymbol NOTIFY changed FINAL)
    Q_PROPERTY(QColor cyan READ cyan NOTIFY changed FINAL)
    Q_PROPERTY(QColor yellow READ yellow NOTIFY changed FINAL)
    Q_PROPERTY(QColor orange READ orange NOTIFY changed FINAL)
    Q_PROPERTY(QColor red READ red NOTIFY changed FINAL)
    Q_PROPERTY(QColor switchOff READ switchOff NOTIFY changed FINAL)
    Q_PROPERTY(QColor knob READ knob NOTIFY changed FINAL)
    Q_PROPERTY(QColor dim READ dim NOTIFY changed FINAL)
    Q_PROPERTY(QColor sheet READ sheet NOTIFY changed FINAL)
    Q_PROPERTY(QColor tip READ tip NOTIFY changed FINAL)
    Q_PROPERTY(QColor tipText READ tipText NOTIFY changed FINAL)

public:
    bool isDark() const { return m_palette == &darkPalette(); }
    void setDark(bool isDark);
    /// Pixels of the window's screen to a point.
    double pixelRatio() const { return m_pixelRatio; }
    void setPixelRatio(double pixelRatio);

    QColor window() const { return m_palette->window; }
    QColor bar() const { return m_palette->bar; }
    QColor card() const { return m_palette->card; }
    QColor field() const { return m_palette->field; }
    QColor well() const { return m_palette->well; }
    QColor raised() const { return m_palette->raised; }
    QColor badge() const { return m_palette->badge; }
    QColor hover() const { return m_palette->hover; }
    QColor hoverBorder() const { return m_palette->hoverBorder; }
    QColor pressed() const { return m_palette->pressed; }
    QColor text() const { return m_palette->text; }
    QColor secondaryText() const { return m_palette->secondaryText; }
    QColor placeholderText() const { return m_palette->placeholderText; }
    QColor separator() const { return m_palette->separator; }
    QColor border() const { return m_palette->border; }
    QColor fieldBorder() const { return m_palette->fieldBorder; }
    QColor accent() const { return m_palette->accent; }
    QColor accentPressed() const { return m_palette->accentPressed; }
    QColor accentText() const { return m_palette->accentText; }
    QColor destructive() const { return m_palette->destructive; }
    QColor onAccent() const { return m_palette->onAccent; }
    QColor selection() const { return m_palette->selection; }
    QColor green() const { return m_palette->green; }
    QColor greenSymbol() const { return m_palette->greenSymbol; }
    QColor orangeSymbol() const { return m_palette->orangeSymbol; }
    QColor cyan() const { return m_palette->cyan; }
    QColor yellow() const { return m_palette->yellow; }
    QColor orange() const { return m_palette->orange; }
    QColor red() const { return m_palette->red; }
    QColor switchOff() const { return m_palette->switchOff; }
    QColor knob() const { return m_palette->knob; }
    QColor dim() const { return m_palette->dim; }
    QColor sheet() const { return m_palette->sheet; }
    QColor tip() const { return m_palette->tip; }
    QColor tipText() const { return m_palette->tipText; }

    /// The colour of an action type, by its raw value, in one of the looks; that of text for an unknown one.
    Q_INVOKABLE static QColor typeColor(const QString& type, bool isDark);
    /// `color` at an opacity of 0 to 1.
    Q_INVOKABLE static QColor tint(QColor color, double opacity);

Q_SIGNALS:
    void changed();
    void pixelRatioChanged();

private:
    const Palette* m_palette = &lightPalette();
    double m_pixelRatio = 1;
};

} // namespace Tavrin
