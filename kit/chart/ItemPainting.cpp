#include "kit/chart/ItemPainting.h"

#include <QAbstractTextDocumentLayout>
#include <QFontMetricsF>
#include <QJSValue>
#include <QLinearGradient>
#include <QPainter>
#include <QQmlListReference>
#include <QQuickItem>
#include <QTextDocument>
#include <QTextOption>

namespace graph {

namespace {

double number(const QObject &object, const char *name)
{
    return object.property(name).toDouble();
}

QBrush fillOf(const QQuickItem &item)
{
    QObject *gradient = item.property("gradient").value<QJSValue>().toQObject();
    QQmlListReference stops(gradient, "stops");
    if (!gradient || stops.count() == 0)
        return item.property("color").value<QColor>();
    const bool isHorizontal = gradient->property("orientation").toInt() == Qt::Horizontal;
    QLinearGradient fill(0.0, 0.0, isHorizontal ? item.width() : 0.0, isHorizontal ? 0.0 : item.height());
    for (int i = 0; i < int(stops.count()); ++i)
        fill.setColorAt(number(*stops.at(i), "position"), stops.at(i)->property("color").value<QColor>());
    return fill;
}

// The border of a rectangle; null for one without. Asking for the property would make one that looks like a
// real one.
const QObject *borderOf(const QQuickItem &item)
{
    for (const QObject *child : item.children()) {
        if (child->inherits("QQuickPen"))
            return child;
    }
    return nullptr;
}

// The numbers of Text's own enumerations.
enum TextFormat { PlainText, RichText, AutoText };
enum TextStyle { Normal, Outline, Raised, Sunken };

bool isRich(const QQuickItem &item, const QString &text)
{
    const int format = item.property("textFormat").toInt();
    return format != PlainText && (format != AutoText || Qt::mightBeRichText(text));
}

QRectF textArea(const QQuickItem &item)
{
    return item.boundingRect().isEmpty()
               ? QRectF()
               : QRectF(0.0, 0.0, item.width(), item.height())
                     .adjusted(number(item, "leftPadding"), number(item, "topPadding"),
                               -number(item, "rightPadding"), -number(item, "bottomPadding"));
}

Qt::Alignment alignmentOf(const QQuickItem &item)
{
    return Qt::Alignment(item.property("effectiveHorizontalAlignment").toInt()) |
           Qt::Alignment(item.property("verticalAlignment").toInt());
}

void paintRichText(const QQuickItem &item, const QString &text, QPainter *painter)
{
    const QRectF area = textArea(item);
    const Qt::Alignment alignment = alignmentOf(item);
    QTextDocument document;
    document.setDocumentMargin(0.0);
    document.setDefaultFont(painter->font());
    document.setDefaultTextOption(QTextOption(alignment & Qt::AlignHorizontal_Mask));
    document.setHtml(text);
    document.setTextWidth(area.width());
    const double room = area.height() - document.size().height();
    const double share = alignment & Qt::AlignBottom ? 1.0 : alignment & Qt::AlignVCenter ? 0.5 : 0.0;
    painter->translate(area.left(), area.top() + room * share);
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, item.property("color").value<QColor>());
    document.documentLayout()->draw(painter, context);
}

void paintPlainText(const QQuickItem &item, QString text, QPainter *painter)
{
    const QRectF area = textArea(item);
    int flags = int(alignmentOf(item)) | Qt::TextDontClip;
    const int wrap = item.property("wrapMode").toInt();
    if (wrap == QTextOption::WordWrap || wrap == QTextOption::WrapAtWordBoundaryOrAnywhere)
        flags |= Qt::TextWordWrap;
    else if (wrap == QTextOption::WrapAnywhere)
        flags |= Qt::TextWrapAnywhere;
    const auto elide = Qt::TextElideMode(item.property("elide").toInt());
    if (elide != Qt::ElideNone && item.property("truncated").toBool())
        text = QFontMetricsF(painter->font(), painter->device()).elidedText(text, elide, area.width());

    const auto drawMoved = [&](double x, double y, const QColor &color) {
        painter->setPen(color);
        painter->drawText(area.translated(x, y), flags, text);
    };
    const QColor behind = item.property("styleColor").value<QColor>();
    const int style = item.property("style").toInt();
    if (style == Outline) {
        for (const QPointF &shift : {QPointF(-1, 0), QPointF(1, 0), QPointF(0, -1), QPointF(0, 1)})
            drawMoved(shift.x(), shift.y(), behind);
    } else if (style != Normal) {
        drawMoved(0.0, style == Raised ? 1.0 : -1.0, behind);
    }
    drawMoved(0.0, 0.0, item.property("color").value<QColor>());
}

} // namespace

void paintRectangle(const QQuickItem &item, QPainter *painter)
{
    const QBrush fill = fillOf(item);
    const QObject *border = borderOf(item);
    const double width = border ? number(*border, "width") : 0.0;
    const QColor line = border ? border->property("color").value<QColor>() : QColor();
    const bool hasBorder = width > 0.0 && line.alpha() > 0;
    QRectF rect(0.0, 0.0, item.width(), item.height());
    double radius = qMin(number(item, "radius"), qMin(rect.width(), rect.height()) / 2.0);
    if (hasBorder) {
        // The border lies inside of the rectangle.
        rect.adjust(width / 2.0, width / 2.0, -width / 2.0, -width / 2.0);
        radius = qMax(0.0, radius - width / 2.0);
    }
    painter->setPen(hasBorder ? QPen(line, width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin)
                              : QPen(Qt::NoPen));
    painter->setBrush(fill);
    if (radius > 0.0)
        painter->drawRoundedRect(rect, radius, radius);
    else
        painter->drawRect(rect);
}

void paintText(const QQuickItem &item, QPainter *painter)
{
    const QString text = item.property("text").toString();
    painter->setFont(item.property("font").value<QFont>());
    if (text.isEmpty())
        return;
    if (isRich(item, text))
        paintRichText(item, text, painter);
    else
        paintPlainText(item, text, painter);
}

} // namespace graph
