#include "ui/drawing_window.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>
#include <QPainterPath>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include "ui/drawing_view.h"
#include "ui/guarded.h"

namespace parvenna::ui {
namespace {

enum class Glyph { Layers, ZoomIn, ZoomOut, All, Part, Back, Redraw, Overview, Done };

// The buttons' pictures, drawn here so that they look the same on every desktop.
QIcon PaintedIcon(Glyph glyph) {
  constexpr int size = 20;
  QPixmap pixmap(size, size);
  pixmap.fill(Qt::transparent);
  QPainter p(&pixmap);
  p.setRenderHint(QPainter::Antialiasing);
  QPen pen(QColor(40, 40, 40), 1.6);
  pen.setCapStyle(Qt::RoundCap);
  pen.setJoinStyle(Qt::RoundJoin);
  p.setPen(pen);
  const auto magnifier = [&](bool plus, bool minus) {
    p.drawEllipse(QPointF(8, 8), 5.5, 5.5);
    p.drawLine(QPointF(12, 12), QPointF(17.5, 17.5));
    if (plus || minus) p.drawLine(QPointF(5.5, 8), QPointF(10.5, 8));
    if (plus) p.drawLine(QPointF(8, 5.5), QPointF(8, 10.5));
  };
  switch (glyph) {
    case Glyph::Layers: {
      for (int k = 0; k < 3; ++k) {
        const double y = 5 + 4.5 * k;
        QPolygonF sheet({QPointF(3, y + 2.5), QPointF(10, y - 1), QPointF(17, y + 2.5),
                         QPointF(10, y + 6)});
        p.setBrush(k == 0 ? QColor(120, 170, 230) : QColor(230, 230, 230));
        p.drawPolygon(sheet);
      }
      break;
    }
    case Glyph::ZoomIn: magnifier(true, false); break;
    case Glyph::ZoomOut: magnifier(false, true); break;
    case Glyph::All:
      p.drawRect(QRectF(3, 3, 14, 14));
      p.drawLine(QPointF(6, 6), QPointF(9, 9));
      p.drawLine(QPointF(14, 6), QPointF(11, 9));
      p.drawLine(QPointF(6, 14), QPointF(9, 11));
      p.drawLine(QPointF(14, 14), QPointF(11, 11));
      break;
    case Glyph::Part: {
      QPen dashed = pen;
      dashed.setStyle(Qt::DashLine);
      dashed.setWidthF(1.2);
      p.setPen(dashed);
      p.drawRect(QRectF(2.5, 2.5, 10, 8));
      p.setPen(pen);
      p.drawLine(QPointF(10, 9), QPointF(17, 17));
      p.drawLine(QPointF(17, 17), QPointF(17, 12.5));
      p.drawLine(QPointF(17, 17), QPointF(12.5, 17));
      break;
    }
    case Glyph::Back: {
      QPainterPath path;
      path.moveTo(16, 15);
      path.cubicTo(16, 7, 10, 6, 4, 8);
      p.drawPath(path);
      p.drawLine(QPointF(4, 8), QPointF(8, 4.5));
      p.drawLine(QPointF(4, 8), QPointF(8.5, 11));
      break;
    }
    case Glyph::Redraw: {
      p.drawArc(QRectF(3.5, 3.5, 13, 13), 90 * 16, 270 * 16);
      p.drawLine(QPointF(10, 3.5), QPointF(13.5, 1.5));
      p.drawLine(QPointF(10, 3.5), QPointF(13, 6.5));
      break;
    }
    case Glyph::Overview: {
      p.drawRect(QRectF(2.5, 2.5, 15, 15));
      p.setBrush(QColor(120, 170, 230));
      p.drawRect(QRectF(9.5, 10.5, 7, 6));
      break;
    }
    case Glyph::Done: {
      QPen green(QColor(30, 130, 50), 2.4);
      green.setCapStyle(Qt::RoundCap);
      green.setJoinStyle(Qt::RoundJoin);
      p.setPen(green);
      p.drawPolyline(QPolygonF({QPointF(3.5, 10.5), QPointF(8, 15), QPointF(16.5, 4.5)}));
      break;
    }
  }
  return QIcon(pixmap);
}

QString Q(const std::string& text) { return QString::fromStdString(text); }

}  // namespace

DrawingWindow::DrawingWindow(drawing::ViewForm& form, QWidget* parent)
    : QWidget(parent), form_(form) {}

DrawingWindow::~DrawingWindow() = default;

QToolButton* DrawingWindow::AddButton(QHBoxLayout* bar, const char* name, CommandButton& model,
                                      const QIcon& icon, const std::function<void()>& click) {
  auto* button = new QToolButton(this);
  button->setObjectName(name);
  button->setIcon(icon);
  button->setIconSize(QSize(20, 20));
  button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  button->setAutoRaise(true);
  bar->addWidget(button);
  connect(button, &QToolButton::clicked, this, [this, click] { Run(click); });
  buttons_.push_back({button, &model});
  return button;
}

void DrawingWindow::bind() {
  if (bound_) return;
  bound_ = true;
  setObjectName("frmView");
  setWindowTitle("Drawing");
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(4, 4, 4, 4);
  column->setSpacing(4);
  auto* bar = new QHBoxLayout();
  bar->setSpacing(2);
  column->addLayout(bar);

  drawing::ViewForm& f = form_;
  const auto add = [&](const char* name, CommandButton& model, Glyph glyph,
                       void (drawing::ViewForm::*click)()) {
    return AddButton(bar, name, model, PaintedIcon(glyph), [&f, click] { (f.*click)(); });
  };
  add("cmdLayer1", f.cmdLayer1, Glyph::Layers, &drawing::ViewForm::cmdLayer1_Click);
  add("cmdLayer2", f.cmdLayer2, Glyph::Layers, &drawing::ViewForm::cmdLayer2_Click);
  bar->addSpacing(10);
  add("cmdZoomIn", f.cmdZoomIn, Glyph::ZoomIn, &drawing::ViewForm::cmdZoomIn_Click);
  add("cmdZoomOut", f.cmdZoomOut, Glyph::ZoomOut, &drawing::ViewForm::cmdZoomOut_Click);
  add("cmd100", f.cmd100, Glyph::All, &drawing::ViewForm::cmd100_Click);
  add("cmdPartLarge", f.cmdPartLarge, Glyph::Part, &drawing::ViewForm::cmdPartLarge_Click);
  add("cmdUndo", f.cmdUndo, Glyph::Back, &drawing::ViewForm::cmdUndo_Click);
  add("cmdRedraw", f.cmdRedraw, Glyph::Redraw, &drawing::ViewForm::cmdRedraw_Click);
  overview_ = add("cmdOverview", f.cmdOverview, Glyph::Overview, &drawing::ViewForm::cmdOverview_Click);
  overview_->setCheckable(true);
  bar->addStretch(1);
  QToolButton* done = add("cmdDone", f.cmdDone, Glyph::Done, &drawing::ViewForm::cmdDone_Click);
  done->setAutoRaise(false);

  for (int v = 0; v < drawing::kViewCount; ++v) {
    auto* menu = new QMenu(this);
    menu->setObjectName(v == 0 ? "mnuLayer1" : "mnuLayer2");
    layerMenus_[static_cast<std::size_t>(v)] = menu;
  }

  tabs_ = new QTabWidget(this);
  tabs_->setObjectName("SSTab1");
  tabs_->setDocumentMode(true);
  for (int v = 0; v < drawing::kViewCount; ++v) {
    auto* view = new DrawingView(form_, v, [this](const std::function<void()>& h) { Run(h); }, tabs_);
    view->setObjectName(v == 0 ? "Dbcocx1" : "Dbcocx2");
    views_[static_cast<std::size_t>(v)] = view;
    tabs_->addTab(view, Q(form_.SSTab1.TabCaption[static_cast<std::size_t>(v)]));
  }
  connect(tabs_, &QTabWidget::currentChanged, this,
          [this](int tab) { Run([this, tab] { form_.SSTab1_Click(tab); }); });
  column->addWidget(tabs_, 1);
  resize(900, 650);
  Refresh();
}

void DrawingWindow::Run(const std::function<void()>& handler) {
  ++depth_;
  RunGuarded(form_.prompter(), handler);
  if (--depth_ == 0) AfterEvent();
}

void DrawingWindow::AfterEvent() {
  Refresh();
  const int request = form_.LayerMenuRequest;
  if (request < 0 || request >= drawing::kViewCount) return;
  form_.LayerMenuRequest = -1;
  QToolButton* button = ButtonOf(request == 0 ? form_.cmdLayer1 : form_.cmdLayer2);
  QMenu* menu = LayerMenu(request);
  if (button && menu && !menu->isEmpty()) menu->popup(button->mapToGlobal(QPoint(0, button->height())));
}

QToolButton* DrawingWindow::ButtonOf(const CommandButton& button) const {
  for (const Bound& b : buttons_) {
    if (b.model == &button) return b.widget;
  }
  return nullptr;
}

void DrawingWindow::MirrorLayerMenu(int view) {
  const auto v = static_cast<std::size_t>(view);
  const std::vector<MenuItem>& entries = view == 0 ? form_.mnuLayer1 : form_.mnuLayer2;
  std::vector<std::pair<std::string, bool>> now;
  now.reserve(entries.size());
  for (const MenuItem& m : entries) now.emplace_back(m.Caption, m.Checked);
  if (now == shownLayers_[v]) return;
  QMenu* menu = layerMenus_[v];
  const bool sameEntries =
      now.size() == shownLayers_[v].size() &&
      std::equal(now.begin(), now.end(), shownLayers_[v].begin(),
                 [](const auto& a, const auto& b) { return a.first == b.first; });
  if (sameEntries) {
    const QList<QAction*> actions = menu->actions();
    for (std::size_t i = 0; i < now.size(); ++i) {
      const QSignalBlocker block(actions[static_cast<qsizetype>(i)]);
      actions[static_cast<qsizetype>(i)]->setChecked(now[i].second);
    }
  } else {
    menu->clear();
    for (std::size_t i = 0; i < now.size(); ++i) {
      QAction* action = menu->addAction(Q(now[i].first));
      action->setCheckable(true);
      action->setChecked(now[i].second);
      const int index = static_cast<int>(i);
      connect(action, &QAction::triggered, this, [this, view, index] {
        Run([this, view, index] {
          if (view == 0) form_.mnuLayer1_Click(index);
          else form_.mnuLayer2_Click(index);
        });
      });
    }
  }
  shownLayers_[v] = std::move(now);
}

void DrawingWindow::Refresh() {
  if (!bound_) return;
  // The editor clears its list of used labels on its own events.
  form_.FollowUsedList();
  {
    const QSignalBlocker block(overview_);
    overview_->setChecked(form_.OverviewWanted());
  }
  for (const Bound& b : buttons_) {
    b.widget->setText(Q(b.model->Caption));
    b.widget->setToolTip(Q(b.model->ToolTipText));
    b.widget->setEnabled(b.model->Enabled);
    b.widget->setVisible(b.model->Visible);
  }
  {
    const QSignalBlocker block(tabs_);
    for (int v = 0; v < drawing::kViewCount; ++v) {
      tabs_->setTabText(v, Q(form_.SSTab1.TabCaption[static_cast<std::size_t>(v)]));
    }
    tabs_->setCurrentIndex(form_.SSTab1.Tab);
  }
  for (int v = 0; v < drawing::kViewCount; ++v) {
    MirrorLayerMenu(v);
    View(v)->Sync();
  }
}

}  // namespace parvenna::ui
