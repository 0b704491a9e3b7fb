#include "traffic/TNTrafficChart.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace {
// One direction's stacked areas in rect: the base of series k is the top of series k-1.
void paintDirection(QPainter& p, const QRectF& rect, const QVector<TrafficFigures::Series>& series,
                    double scale, int points, const SettingsStore* settings, bool growsDown)
{
    if (points < 1)
        return;
    const double step = points > 1 ? rect.width() / (points - 1) : rect.width();
    const auto xAt = [&](int fromNewest) { return rect.right() - fromNewest * step; };
    const auto yAt = [&](double value) {
        const double h = rect.height() * std::min(value / scale, 1.0);
        return growsDown ? rect.top() + h : rect.bottom() - h;
    };
    QVector<double> base(points, 0.0);
    for (const TrafficFigures::Series& s : series) {
        QVector<double> top = base;
        for (int i = 0; i < points; ++i) {
            const qsizetype idx = s.kbits.size() - 1 - i;
            if (idx >= 0)
                top[i] += s.kbits.at(idx);
        }
        QPainterPath path;
        path.moveTo(xAt(0), yAt(top[0]));
        for (int i = 1; i < points; ++i)
            path.lineTo(xAt(i), yAt(top[i]));
        for (int i = points - 1; i >= 0; --i)
            path.lineTo(xAt(i), yAt(base[i]));
        path.closeSubpath();
        QColor fill = TrafficFigures::colorFor(s.key, settings);
        p.setPen(QPen(fill.darker(120), 1));
        fill.setAlpha(200);
        p.setBrush(fill);
        p.drawPath(path);
        base = top;
    }
}
} // namespace

TNTrafficChart::TNTrafficChart(const SettingsStore* settings, QWidget* parent)
    : QWidget(parent), m_settings(settings)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    m_figures = TrafficFigures::fromRecord({});
}

void TNTrafficChart::updateTrafficChartWithData(const QVariantMap& record)
{
    m_figures = TrafficFigures::fromRecord(record);
    update();
}

void TNTrafficChart::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.fillRect(rect(), palette().base());
    const QRectF area = QRectF(rect()).adjusted(6, 6, -6, -6);
    const double middle = area.center().y();
    const QRectF downRect(area.left(), area.top(), area.width(), middle - area.top() - 1);
    const QRectF upRect(area.left(), middle + 1, area.width(), area.bottom() - middle - 1);
    const int points = m_figures.length();

    paintDirection(p, downRect, m_figures.down, TrafficFigures::scaleOf(m_figures.down, m_figures.maxDown),
                   points, m_settings, false);
    paintDirection(p, upRect, m_figures.up, TrafficFigures::scaleOf(m_figures.up, m_figures.maxUp), points,
                   m_settings, true);

    p.setPen(QPen(palette().mid().color(), 1));
    p.drawLine(QPointF(area.left(), middle), QPointF(area.right(), middle));
    p.setPen(palette().text().color());
    const QFontMetrics fm(font());
    p.drawText(QPointF(area.left() + 2, area.top() + fm.ascent()), m_figures.downLabel());
    p.drawText(QPointF(area.left() + 2, area.bottom() - fm.descent()), m_figures.upLabel());
    // The maxima the router has seen, for scale.
    p.setPen(palette().placeholderText().color());
    const auto maxText = [](double kbits) { return tr("max %1 kbit/s").arg(kbits, 0, 'f', 1); };
    const QString maxDown = maxText(m_figures.maxDown);
    const QString maxUp = maxText(m_figures.maxUp);
    p.drawText(QPointF(area.right() - 2 - fm.horizontalAdvance(maxDown), area.top() + fm.ascent()), maxDown);
    p.drawText(QPointF(area.right() - 2 - fm.horizontalAdvance(maxUp), area.bottom() - fm.descent()), maxUp);
}

QIcon TNTrafficChart::trayIcon(const TrafficFigures& figures, const QColor& color, int size)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF area(1, 1, size - 2, size - 2);
    const double middle = area.center().y();
    const int points = std::min(figures.length(), size - 2);
    const auto band = [&](const QVector<TrafficFigures::Series>& series, double maximum, bool growsDown) {
        const double scale = TrafficFigures::scaleOf(series, maximum);
        const double half = area.height() / 2 - 1;
        for (int i = 0; i < points; ++i) {
            const double h = half * std::min(TrafficFigures::stackedAt(series, i) / scale, 1.0);
            const double x = area.right() - i;
            if (growsDown)
                p.drawLine(QPointF(x, middle + 1), QPointF(x, middle + 1 + h));
            else
                p.drawLine(QPointF(x, middle - 1), QPointF(x, middle - 1 - h));
        }
    };
    p.setPen(QPen(color, 1));
    band(figures.down, figures.maxDown, false);
    band(figures.up, figures.maxUp, true);
    p.drawLine(QPointF(area.left(), middle), QPointF(area.right(), middle));
    return QIcon(pixmap);
}
