#include "kit/chart/DiagnosisOverlay.h"

#include <QPainter>

namespace graph {

namespace {

constexpr qreal margin = 8.0;
constexpr int fontSize = 13;

} // namespace

DiagnosisOverlay::DiagnosisOverlay(QQuickItem *view)
    : QQuickPaintedItem(view)
{
    setZ(1e6);
    connect(view, SIGNAL(widthChanged()), this, SLOT(fillView()));
    connect(view, SIGNAL(heightChanged()), this, SLOT(fillView()));
    fillView();
}

void DiagnosisOverlay::setMessages(const QStringList &messages)
{
    m_messages = messages;
    update();
}

void DiagnosisOverlay::paint(QPainter *painter)
{
    const QString text = m_messages.join(QLatin1String("\n\n"));
    QFont font;
    font.setPixelSize(fontSize);
    painter->setFont(font);
    const QRectF room = boundingRect().adjusted(2 * margin, 2 * margin, -2 * margin, -2 * margin);
    const QRectF lines = painter->boundingRect(room, Qt::TextWordWrap, text) & room;
    painter->fillRect(lines.adjusted(-margin, -margin, margin, margin), QColor(255, 248, 220, 235));
    painter->setPen(QColor(120, 20, 0));
    painter->drawText(lines, Qt::TextWordWrap, text);
}

void DiagnosisOverlay::fillView()
{
    setSize(parentItem()->size());
    update();
}

} // namespace graph
