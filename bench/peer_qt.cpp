// Qt's graphics scene, with an item for each polyline.

#include <QApplication>
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QPolygonF>

#include "bench/contestant.h"

namespace bench {

namespace {

class Item final : public QGraphicsItem {
 public:
  Item(std::span<const scenes::Point> points, LM_RGB32 color) : m_color(color.word) {
    m_points.reserve(static_cast<qsizetype>(points.size()));
    for (const scenes::Point& point : points) m_points.append(QPointF(point.x, point.y));
    m_bounds = m_points.boundingRect();
  }

  [[nodiscard]] QRectF boundingRect() const override { return m_bounds; }
  void paint(QPainter* painter, const QStyleOptionGraphicsItem* /*option*/,
             QWidget* /*widget*/) override {
    painter->setPen(QPen(QColor::fromRgb(m_color), 0));  // a pixel wide in any view
    painter->drawPolyline(m_points);
  }

 private:
  QPolygonF m_points;
  QRectF m_bounds;
  QRgb m_color;
};

/// Takes everything that a painter does and draws nothing.
class NullEngine final : public QPaintEngine {
 public:
  NullEngine() : QPaintEngine(AllFeatures) {}
  bool begin(QPaintDevice* /*device*/) override { return true; }
  bool end() override { return true; }
  void updateState(const QPaintEngineState& /*state*/) override {}
  void drawPixmap(const QRectF& /*place*/, const QPixmap& /*pixmap*/,
                  const QRectF& /*part*/) override {}
  void drawPolygon(const QPointF* /*points*/, int /*count*/, PolygonDrawMode /*mode*/) override {}
  void drawPolygon(const QPoint* /*points*/, int /*count*/, PolygonDrawMode /*mode*/) override {}
  [[nodiscard]] Type type() const override { return User; }
};

class NullDevice final : public QPaintDevice {
 public:
  [[nodiscard]] QPaintEngine* paintEngine() const override { return &m_engine; }

 protected:
  [[nodiscard]] int metric(PaintDeviceMetric metric) const override {
    switch (metric) {
      case PdmWidth:
        return kWidth;
      case PdmHeight:
        return kHeight;
      case PdmDevicePixelRatio:
        return 1;
      case PdmDevicePixelRatioScaled:
        return static_cast<int>(devicePixelRatioFScale());
      case PdmDepth:
        return 32;
      default:
        return 96;
    }
  }

 private:
  mutable NullEngine m_engine;
};

/// The one application of the process, which needs no screen.
void ensure_application() {
  static int argc = 1;
  static char name[] = "bench";
  static char* argv[] = {name, nullptr};
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qputenv("QT_LOGGING_RULES", "default.warning=false");
  static const QApplication application(argc, argv);
}

class QtScene final : public Contestant {
 public:
  QtScene() : m_image(kWidth, kHeight, QImage::Format_RGB32) {
    ensure_application();
    m_scene = std::make_unique<QGraphicsScene>();
  }

  void build(const scenes::Polylines& lines) override {
    for (std::size_t i = 0; i < lines.count(); ++i) {
      m_scene->addItem(new Item(lines.polyline(i), lines.color(i)));
    }
    m_scene->setSceneRect(m_scene->itemsBoundingRect());
    // The index is made when it is asked for the first time.
    static_cast<void>(m_scene->items(m_scene->sceneRect().center()));
  }
  void clear() override { m_scene = std::make_unique<QGraphicsScene>(); }
  void draw(const View& view, Target target) override {
    QPainter painter(target == Target::null ? static_cast<QPaintDevice*>(&m_nothing) : &m_image);
    const QRectF window(QPointF(view.window.min.x, view.window.min.y),
                        QPointF(view.window.max.x, view.window.max.y));
    m_scene->render(&painter, QRectF(0, 0, kWidth - 1, kHeight - 1), window, Qt::IgnoreAspectRatio);
  }
  std::span<std::uint32_t> pixels() override {
    return {reinterpret_cast<std::uint32_t*>(m_image.bits()),
            static_cast<std::size_t>(kWidth) * kHeight};
  }

 private:
  std::unique_ptr<QGraphicsScene> m_scene;
  QImage m_image;
  NullDevice m_nothing;
};

}  // namespace

std::unique_ptr<Contestant> make_qt_scene() {
  return std::make_unique<QtScene>();
}

}  // namespace bench
