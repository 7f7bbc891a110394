#pragma once

#include <QQuickPaintedItem>
#include <QStringList>

namespace graph {

// The messages of a diagnosis, written over the chart that they are about.
class DiagnosisOverlay : public QQuickPaintedItem
{
    Q_OBJECT

public:
    explicit DiagnosisOverlay(QQuickItem *view);

    void setMessages(const QStringList &messages);

    void paint(QPainter *painter) override;

private slots:
    void fillView();

private:
    QStringList m_messages;
};

} // namespace graph
