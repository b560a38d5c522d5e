#pragma once

#include <string>
#include <string_view>

#include "platform/canvas.h"
#include "platform/colour.h"

namespace parvenna {

// The image of a picture box, as the printer places it. A canvas that keeps
// what was painted on it offers this beside Canvas, so that a page can show
// the editor's sketch.
class PictureImage {
 public:
  virtual ~PictureImage() = default;
  virtual Rgb BackColor() const = 0;
  virtual void SetBackColor(Rgb colour) = 0;
  // Paints the picture's strokes again on `target`, scaled from the
  // picture's own size to the target's; the printer fills the background
  // with BackColor first.
  virtual void PaintOn(Canvas& target) const = 0;
};

// The printer: pages in inches from the top left corner of the paper, y
// growing downwards. The properties carry the printer object's names; the
// text flow of Print is the same on every printer, and each implementation
// gives the fonts' measures and the marks.
//
// A page exists once something is printed on it: NewPage followed by EndDoc
// leaves no blank page, and a document without marks prints nothing.
class Printer {
 public:
  virtual ~Printer() = default;

  int Orientation = 1;  // 1 portrait, 2 landscape
  int ScaleMode = 5;    // 5 inches, the only scale of this port
  std::string FontName = "Arial";
  double FontSize = 10;  // points
  bool FontBold = false;
  bool FontUnderline = false;
  double CurrentX = 0;
  double CurrentY = 0;

  // Prints at CurrentX, CurrentY. Each CR LF in the text goes to the start of
  // the next line; with lineEnd the print ends the line too, otherwise
  // CurrentX stays behind the text (the `;` of a print statement).
  void Print(std::string_view text, bool lineEnd = true) {
    std::size_t start = 0;
    for (;;) {
      const std::size_t crlf = text.find("\r\n", start);
      const std::string_view part = text.substr(start, crlf == std::string_view::npos
                                                           ? std::string_view::npos
                                                           : crlf - start);
      Mark();
      if (!part.empty()) {
        DrawText(CurrentX, CurrentY, part);
        CurrentX += TextWidth(part);
      }
      if (crlf == std::string_view::npos) break;
      NextLine();
      start = crlf + 2;
    }
    if (lineEnd) NextLine();
  }

  void NewPage() {
    if (pageOpen_) pageOpen_ = false;
    CurrentX = 0;
    CurrentY = 0;
  }

  void PaintPicture(const PictureImage& picture, double x, double y, double width,
                    double height) {
    Mark();
    DrawPicture(picture, x, y, width, height);
  }

  // Ends the print job; the next mark starts a new one.
  void EndDoc() {
    if (docOpen_) FinishDoc();
    docOpen_ = pageOpen_ = false;
    CurrentX = 0;
    CurrentY = 0;
  }

  // Measures in inches, in the current font.
  virtual double TextWidth(std::string_view text) const = 0;
  virtual double TextHeight() const = 0;  // the height of one line
  // The size of the page.
  virtual double ScaleWidth() const { return Orientation == 2 ? 11 : 8.5; }
  virtual double ScaleHeight() const { return Orientation == 2 ? 8.5 : 11; }

 protected:
  virtual void StartDoc() = 0;   // a job's first page begins
  virtual void StartPage() = 0;  // a further page of the job begins
  virtual void DrawText(double x, double y, std::string_view text) = 0;  // y: top of the line
  virtual void DrawPicture(const PictureImage& picture, double x, double y, double width,
                           double height) = 0;
  virtual void FinishDoc() = 0;

 private:
  void Mark() {
    if (!docOpen_) {
      StartDoc();
      docOpen_ = pageOpen_ = true;
    } else if (!pageOpen_) {
      StartPage();
      pageOpen_ = true;
    }
  }
  void NextLine() {
    CurrentX = 0;
    CurrentY += TextHeight();
  }

  bool docOpen_ = false;
  bool pageOpen_ = false;
};

}  // namespace parvenna
