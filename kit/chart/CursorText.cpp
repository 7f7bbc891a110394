#include "kit/chart/CursorText.h"

#include "cursors/GraphCursor.h"
#include "kit/chart/CursorLabels.h"
#include "kit/data/Store.h"

namespace graph {

CursorText::CursorText(QQuickItem *parent)
    : EarlyItem(parent)
{
}

CursorText::~CursorText()
{
    if (m_labels)
        m_labels->remove(this);
}

QString CursorText::text() const
{
    refresh();
    return m_text;
}

void CursorText::setChart(ChartView *chart)
{
    if (m_chart == chart)
        return;
    if (m_chart)
        disconnect(m_chart, nullptr, this, nullptr);
    m_chart = chart;
    if (chart)
        connect(chart, &ChartView::legendBoxChanged, this, [this] { invalidate(); });
    invalidate();
    emit partsChanged();
}

void CursorText::setBox(QQuickItem *box)
{
    if (m_box == box)
        return;
    m_box = box;
    invalidate();
    emit partsChanged();
}

void CursorText::setLabel(QQuickItem *label)
{
    if (m_label == label)
        return;
    m_label = label;
    if (label)
        watchSize(label);
    invalidate();
    emit partsChanged();
}

// A font changes it, too.
void CursorText::watchSize(QQuickItem *item)
{
    const auto follow = [this] {
        if (!m_isWriting)
            invalidate();
    };
    connect(item, &QQuickItem::implicitWidthChanged, this, follow);
    connect(item, &QQuickItem::implicitHeightChanged, this, follow);
    connect(item, &QQuickItem::xChanged, this, follow);
}

void CursorText::setText(const QString &text)
{
    m_hasOwnText = true;
    if (!store(m_text, text))
        return;
    emit textChanged();
    invalidate();
}

void CursorText::resetText()
{
    m_hasOwnText = false;
    invalidate();
}

void CursorText::findText(const QString &text)
{
    if (!m_hasOwnText && store(m_text, text))
        m_hasNews = true;
}

bool CursorText::write(const QString &text)
{
    if (!m_label || !store(m_written, text))
        return false;
    m_isWriting = true;
    m_label->setProperty("text", text);
    m_isWriting = false;
    return true;
}

void CursorText::tell()
{
    if (std::exchange(m_hasNews, false))
        emit textChanged();
}

GraphCursor *CursorText::holder() const
{
    return m_around ? qobject_cast<GraphCursor *>(m_around->parentItem()) : nullptr;
}

void CursorText::itemChange(ItemChange change, const ItemChangeData &data)
{
    if (change == ItemParentHasChanged) {
        if (m_around)
            disconnect(m_around, nullptr, this, nullptr);
        m_around = data.item;
        if (m_around) {
            connect(m_around, SIGNAL(parentChanged(QQuickItem *)), this, SLOT(join()));
            const auto follow = [this] { invalidate(); };
            connect(m_around, &QQuickItem::widthChanged, this, follow);
            connect(m_around, &QQuickItem::heightChanged, this, follow);
            connect(m_around, &QQuickItem::visibleChanged, this, follow);
        }
        join();
    }
    EarlyItem::itemChange(change, data);
}

void CursorText::join()
{
    CursorLabels *labels = CursorLabels::of(holder());
    if (m_labels == labels)
        return;
    if (m_labels)
        m_labels->remove(this);
    m_labels = labels;
    if (labels) {
        labels->add(this);
    } else if (m_around) {
        read();
        show();
        tell();
    }
}

void CursorText::invalidate()
{
    if (m_labels)
        m_labels->invalidate();
}

void CursorText::refresh() const
{
    if (m_labels)
        m_labels->update();
}

void CursorText::prepare()
{
    if (m_labels)
        m_labels->tell();
}

} // namespace graph
