#pragma once

#include "common/Export.h"
#include "plots/GraphPointMarker.h"

#include <QCache>
#include <QImage>

// Marks a reflection: a vertical line with the number of the point, and an icon when the point is selected.
class GRAPH_CHARTS_EXPORT GraphPointReflections : public GraphPointMarker
{
    Q_OBJECT
    Q_PROPERTY(int iconSize READ iconSize WRITE setIconSize NOTIFY iconSizeChanged)
    Q_PROPERTY(QColor iconBackgroundColor READ iconBackgroundColor WRITE setIconBackgroundColor NOTIFY
                   iconBackgroundColorChanged)
    Q_PROPERTY(bool invertColors READ invertColors WRITE setInvertColors NOTIFY invertColorsChanged)
    Q_PROPERTY(OrnData *iconPaths READ iconPaths WRITE setIconPaths NOTIFY iconPathsChanged)

public:
    explicit GraphPointReflections(QObject *parent = nullptr);

    int iconSize() const { return m_iconSize; }
    QColor iconBackgroundColor() const { return m_iconBackgroundColor; }
    bool invertColors() const { return m_invertColors; }
    OrnData *iconPaths() const { return m_iconPaths; }

    void paint(QPainter *painter, int x, int y) override;

public slots:
    void setIconSize(int size);
    void setIconBackgroundColor(const QColor &color);
    void setInvertColors(bool invert);
    void setIconPaths(OrnData *paths);

signals:
    void iconSizeChanged(int iconSize);
    void iconBackgroundColorChanged(const QColor &iconBackgroundColor);
    void invertColorsChanged(bool invertColors);
    void iconPathsChanged(OrnData *iconPaths);

protected:
    virtual void drawAnnotation(QPainter *painter, int x, int y);
    virtual void drawLabel(QPainter *painter, int x, int y, bool below);

private slots:
    void ornDataValueChanged();

private:
    bool hasRoomAbove(QPainter *painter) const;
    QImage icon(const QString &path, int side);

    int m_iconSize = 16;
    QColor m_iconBackgroundColor = Qt::transparent;
    bool m_invertColors = false;
    QPointer<OrnData> m_iconPaths;
    // Ready to be drawn, by path.
    QCache<QString, QImage> m_icons;
};
