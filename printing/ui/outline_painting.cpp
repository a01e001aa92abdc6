#include "printing/ui/outline_painting.h"

#include <QAbstractTextDocumentLayout>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPrinter>
#include <QTextDocument>

namespace tr::printing::ui {

namespace {

// Hands every drawing call on to the painter of the real device, except text, which QPaintEngine
// itself turns into glyph outlines and fills through drawPath.
class OutlineEngine final : public QPaintEngine {
  public:
    explicit OutlineEngine(QPainter& target)
        : QPaintEngine(QPaintEngine::AllFeatures), target_(target), base_(target.transform()) {}

    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    Type type() const override { return User; }

    void updateState(const QPaintEngineState& state) override {
        const DirtyFlags dirty = state.state();
        if (dirty & DirtyPen) target_.setPen(state.pen());
        if (dirty & DirtyBrush) target_.setBrush(state.brush());
        if (dirty & DirtyBrushOrigin) target_.setBrushOrigin(state.brushOrigin());
        if (dirty & DirtyBackground) target_.setBackground(state.backgroundBrush());
        if (dirty & DirtyBackgroundMode) target_.setBackgroundMode(state.backgroundMode());
        if (dirty & DirtyFont) target_.setFont(state.font());
        if (dirty & DirtyHints) {
            target_.setRenderHints(~QPainter::RenderHints(), false);
            target_.setRenderHints(state.renderHints(), true);
        }
        if (dirty & DirtyCompositionMode) target_.setCompositionMode(state.compositionMode());
        if (dirty & DirtyOpacity) target_.setOpacity(state.opacity());
        // The transform first: a clip is given in the coordinates current when it was set.
        if (dirty & DirtyTransform) target_.setTransform(state.transform() * base_);
        if (dirty & DirtyClipRegion) target_.setClipRegion(state.clipRegion(), state.clipOperation());
        if (dirty & DirtyClipPath) target_.setClipPath(state.clipPath(), state.clipOperation());
        if (dirty & DirtyClipEnabled) target_.setClipping(state.isClipEnabled());
    }

    void drawPath(const QPainterPath& path) override { target_.drawPath(path); }
    void drawRects(const QRectF* rects, int count) override { target_.drawRects(rects, count); }
    void drawLines(const QLineF* lines, int count) override { target_.drawLines(lines, count); }
    void drawEllipse(const QRectF& rect) override { target_.drawEllipse(rect); }
    void drawPoints(const QPointF* points, int count) override {
        target_.drawPoints(points, count);
    }
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override {
        if (mode == PolylineMode)
            target_.drawPolyline(points, count);
        else
            target_.drawPolygon(points, count,
                                mode == WindingMode ? Qt::WindingFill : Qt::OddEvenFill);
    }
    void drawPixmap(const QRectF& rect, const QPixmap& pixmap, const QRectF& source) override {
        target_.drawPixmap(rect, pixmap, source);
    }
    void drawTiledPixmap(const QRectF& rect, const QPixmap& pixmap, const QPointF& at) override {
        target_.drawTiledPixmap(rect, pixmap, at);
    }
    void drawImage(const QRectF& rect, const QImage& image, const QRectF& source,
                   Qt::ImageConversionFlags flags) override {
        target_.drawImage(rect, image, source, flags);
    }
    void drawTextItem(const QPointF& at, const QTextItem& item) override {
        QPaintEngine::drawTextItem(at, item);
    }

  private:
    QPainter& target_;
    const QTransform base_;
};

// A device with the printer's size and resolution, so fonts measure as in the layout.
class OutlineDevice final : public QPaintDevice {
  public:
    OutlineDevice(QPainter& target, const QPaintDevice& measures)
        : engine_(target), measures_(measures) {}
    ~OutlineDevice() override = default;

    QPaintEngine* paintEngine() const override { return &engine_; }

  protected:
    int metric(PaintDeviceMetric which) const override {
        switch (which) {
            case PdmWidth: return measures_.width();
            case PdmHeight: return measures_.height();
            case PdmWidthMM: return measures_.widthMM();
            case PdmHeightMM: return measures_.heightMM();
            case PdmNumColors: return measures_.colorCount();
            case PdmDepth: return measures_.depth();
            case PdmDpiX: return measures_.logicalDpiX();
            case PdmDpiY: return measures_.logicalDpiY();
            case PdmPhysicalDpiX: return measures_.physicalDpiX();
            case PdmPhysicalDpiY: return measures_.physicalDpiY();
            case PdmDevicePixelRatio: return int(measures_.devicePixelRatio());
            case PdmDevicePixelRatioScaled:
                return int(measures_.devicePixelRatio() * devicePixelRatioFScale());
        }
        return 0;
    }

  private:
    mutable OutlineEngine engine_;
    const QPaintDevice& measures_;
};

}  // namespace

void paintWithOutlines(QPrinter& printer, const std::function<void(QPainter&)>& paint) {
    QPainter target(&printer);
    if (!target.isActive()) return;
    OutlineDevice device(target, printer);
    QPainter painter(&device);
    paint(painter);
}

void paintAsOutlines(QTextDocument& document, QPrinter& printer) {
    paintWithOutlines(printer, [&](QPainter& painter) {
        const QSizeF page = document.pageSize();
        const int pages = document.pageCount();
        for (int i = 0; i < pages; ++i) {
            if (i > 0) printer.newPage();
            const QRectF shown(QPointF(0, i * page.height()), page);
            painter.save();
            painter.translate(0, -shown.top());
            painter.setClipRect(shown);
            QAbstractTextDocumentLayout::PaintContext context;
            context.clip = shown;
            context.palette.setColor(QPalette::Text, Qt::black);
            document.documentLayout()->draw(&painter, context);
            painter.restore();
        }
    });
}

}  // namespace tr::printing::ui
