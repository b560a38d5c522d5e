#include "ui/splash_screen.h"

#include <QApplication>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>

namespace parvenna::ui {

namespace {

constexpr int kWidth = 480;
constexpr int kHeight = 230;
constexpr const char* kProgramName = "Parvenna";
constexpr const char* kPurpose = "Closure checker for land surveyors";

}  // namespace

void PaintEmblem(QPainter& painter, const QRectF& area) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  // Courses of a five-sided parcel in a unit square; the last one misses the
  // point of beginning by a little.
  const QPointF courses[] = {{0.12, 0.80}, {0.30, 0.18}, {0.78, 0.10},
                             {0.90, 0.62}, {0.52, 0.90}, {0.155, 0.835}};
  auto at = [&area](QPointF p) {
    return QPointF(area.left() + p.x() * area.width(), area.top() + p.y() * area.height());
  };
  QPainterPath parcel(at(courses[0]));
  for (std::size_t i = 1; i < std::size(courses); ++i) parcel.lineTo(at(courses[i]));
  painter.setPen(QPen(QColor(30, 70, 120), area.width() / 28, Qt::SolidLine, Qt::RoundCap,
                      Qt::RoundJoin));
  painter.drawPath(parcel);
  painter.setBrush(QColor(200, 40, 40));
  painter.setPen(Qt::NoPen);
  const double dot = area.width() / 22;
  painter.drawEllipse(at(courses[0]), dot, dot);
  // A north arrow in the top left corner.
  const QPointF tip = at({0.10, 0.06});
  const double h = area.height() * 0.22;
  QPolygonF arrow{tip, tip + QPointF(h * 0.25, h), tip + QPointF(0, h * 0.78),
                  tip + QPointF(-h * 0.25, h)};
  painter.setBrush(QColor(60, 60, 60));
  painter.drawPolygon(arrow);
  painter.restore();
}

SplashScreen::SplashScreen(const std::string& versionLine)
    : QSplashScreen(QPixmap(kWidth, kHeight)), versionLine_(QString::fromStdString(versionLine)) {
  setWindowTitle(kProgramName);
  Paint();
}

void SplashScreen::SetVersionLine(const std::string& versionLine) {
  versionLine_ = QString::fromStdString(versionLine);
  Paint();
}

void SplashScreen::Paint() {
  QPixmap picture(kWidth, kHeight);
  picture.fill(QColor(250, 248, 242));
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(QColor(30, 70, 120), 2));
  painter.drawRect(QRectF(1, 1, kWidth - 2, kHeight - 2));
  painter.fillRect(QRectF(2, kHeight - 46, kWidth - 4, 44), QColor(30, 70, 120));
  PaintEmblem(painter, QRectF(26, 34, 120, 120));

  QFont title = painter.font();
  title.setPointSize(26);
  title.setBold(true);
  painter.setFont(title);
  painter.setPen(QColor(30, 70, 120));
  painter.drawText(QRectF(170, 46, kWidth - 190, 50), Qt::AlignLeft | Qt::AlignVCenter, kProgramName);
  QFont body = painter.font();
  body.setPointSize(11);
  body.setBold(false);
  painter.setFont(body);
  painter.setPen(QColor(60, 60, 60));
  painter.drawText(QRectF(172, 96, kWidth - 190, 50), Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap,
                   kPurpose);
  painter.setPen(Qt::white);
  painter.drawText(QRectF(18, kHeight - 46, kWidth - 36, 44), Qt::AlignLeft | Qt::AlignVCenter,
                   versionLine_);
  painter.end();
  setPixmap(picture);
}

void SplashScreen::ShowCentred() {
  QScreen* screen = this->screen() ? this->screen() : QGuiApplication::primaryScreen();
  if (screen) {
    QRect area = screen->availableGeometry();
    move(area.center() - rect().center());
  }
  show();
  repaint();
  QApplication::processEvents();
}

}  // namespace parvenna::ui
