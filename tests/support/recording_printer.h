#pragma once

#include <string>
#include <vector>

#include "platform/printer.h"

namespace parvenna::testing {

// Keeps every mark put on paper, by job and page. Its font measures are
// fixed figures: a line is 1.15 times the font size, a character half of it.
class RecordingPrinter : public Printer {
 public:
  struct Text {
    double x, y;
    std::string text;
    double size;
    bool bold, underline;
  };
  struct Picture {
    double x, y, width, height;
    const PictureImage* image;
  };
  struct Page {
    std::vector<Text> texts;
    std::vector<Picture> pictures;
    // The texts of the page joined, one line of output a line of the page.
    std::string Lines() const;
  };
  struct Job {
    std::vector<Page> pages;
    bool ended = false;
  };
  std::vector<Job> jobs;
  // When set, the jobs are copied there as the printer goes, for a printer
  // handed over to the code under test.
  std::vector<Job>* keepInto = nullptr;

  RecordingPrinter() = default;
  explicit RecordingPrinter(std::vector<Job>* keep) : keepInto(keep) {}
  ~RecordingPrinter() override {
    if (keepInto) *keepInto = jobs;
  }

  double TextWidth(std::string_view text) const override;
  double TextHeight() const override { return FontSize * 1.15 / 72; }

  // Every page of every job, in order.
  std::vector<const Page*> AllPages() const;

 protected:
  void StartDoc() override { jobs.push_back({{Page{}}, false}); }
  void StartPage() override { jobs.back().pages.emplace_back(); }
  void DrawText(double x, double y, std::string_view text) override {
    jobs.back().pages.back().texts.push_back(
        {x, y, std::string(text), FontSize, FontBold, FontUnderline});
  }
  void DrawPicture(const PictureImage& image, double x, double y, double width,
                   double height) override {
    jobs.back().pages.back().pictures.push_back({x, y, width, height, &image});
  }
  void FinishDoc() override { jobs.back().ended = true; }
};

}  // namespace parvenna::testing
