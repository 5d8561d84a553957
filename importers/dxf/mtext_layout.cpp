// Lines of an MTEXT: broken where they are too long, and put in their places.

#include <algorithm>

#include "importers/dxf/mtext.h"
#include "importers/dxf/text_layout.h"

namespace importers::dxf {

namespace {

/// A run and where it starts in its line.
struct PlacedRun {
  TextRun run;
  double x;
};

struct LineOfRuns {
  std::vector<PlacedRun> runs;
  double width = 0.0;
  double height = 0.0;
};

class LineBreaker {
 public:
  /// `width`: of the longest line; 0: there is none.
  LineBreaker(double width, double usual_height) : m_width(width), m_usual_height(usual_height) {
    begin_line();
  }

  void add(const Piece& piece) {
    if (piece.begins_line) begin_line();
    m_lines.back().height = std::max(m_lines.back().height, piece.format.height);
    std::size_t start = 0;
    while (start < piece.text.size()) {
      // A word and the blanks after it.
      std::size_t end = std::min(piece.text.find(' ', start), piece.text.size());
      while (end < piece.text.size() && piece.text[end] == ' ') ++end;
      if (m_width <= 0) end = piece.text.size();
      add_word(piece, piece.text.substr(start, end - start));
      start = end;
    }
  }

  [[nodiscard]] std::vector<LineOfRuns>& lines() {
    for (LineOfRuns& line : m_lines) {
      if (line.height == 0) line.height = m_usual_height;
    }
    return m_lines;
  }

 private:
  void begin_line() { m_lines.emplace_back(); }

  [[nodiscard]] static double width_of(const TextRun& run) {
    const TextMeasures m = measures(run.font, run.text);
    return m.advance / m.cap_height * run.cap_height * run.width_factor;
  }

  void add_word(const Piece& piece, const std::wstring& word) {
    TextRun run;
    run.font = font_of(piece.format.font);
    run.cap_height = piece.format.height;
    run.width_factor = piece.format.width_factor;
    run.color = piece.format.color;
    run.text = word.substr(0, word.find_last_not_of(' ') + 1);
    const double seen = width_of(run);
    run.text = word;
    if (m_width > 0 && m_lines.back().width > 0 && m_lines.back().width + seen > m_width) {
      // Blanks where a line is full belong to its end, not to the next one.
      if (word.find_first_not_of(' ') == std::wstring::npos) return;
      begin_line();
    }
    LineOfRuns& line = m_lines.back();
    line.height = std::max(line.height, run.cap_height);
    const bool goes_on = !line.runs.empty() && m_last_piece == &piece;
    m_last_piece = &piece;
    if (goes_on) {
      PlacedRun& last = line.runs.back();
      last.run.text += word;
      line.width = last.x + width_of(last.run);
      return;
    }
    line.runs.push_back({run, line.width});
    line.width += width_of(run);
  }

  double m_width;
  double m_usual_height;
  std::vector<LineOfRuns> m_lines;
  const Piece* m_last_piece = nullptr;
};

/// A blank at the end of a line takes no room.
double seen_width(const LineOfRuns& line) {
  if (line.runs.empty()) return 0.0;
  const PlacedRun& last = line.runs.back();
  TextRun run = last.run;
  run.text.resize(run.text.find_last_not_of(' ') + 1);
  const TextMeasures m = measures(run.font, run.text);
  return last.x + m.advance / m.cap_height * run.cap_height * run.width_factor;
}

}  // namespace

std::vector<TextRun> laid_out(const Paragraphs& text, const Model& model) {
  // Between baselines, of the height of the text.
  constexpr double usual_spacing = 5.0 / 3;
  if (!(text.height > 0)) return {};
  PieceFormat format;
  format.height = text.height;
  if (text.style < model.styles.items().size()) {
    format.font = model.styles[text.style].font;
    format.width_factor = model.styles[text.style].width_factor;
  }
  LineBreaker breaker(text.width, text.height);
  const std::vector<Piece> pieces = pieces_of(text.text, format);
  for (const Piece& piece : pieces) breaker.add(piece);
  const std::vector<LineOfRuns>& lines = breaker.lines();

  const double spacing = usual_spacing * (text.spacing > 0 ? text.spacing : 1.0);
  double height = lines.front().height;
  for (std::size_t i = 1; i < lines.size(); ++i) height += spacing * lines[i].height;
  const Affine place = Affine::moving(text.at.x, text.at.y) * Affine::turning(text.rotation);
  const int column = std::clamp((text.attachment - 1) % 3, 0, 2);
  const int row = std::clamp((text.attachment - 1) / 3, 0, 2);
  double y = height * row / 2;
  std::vector<TextRun> runs;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    y -= i == 0 ? lines[i].height : spacing * lines[i].height;
    const double x = -seen_width(lines[i]) * column / 2;
    for (const PlacedRun& placed : lines[i].runs) {
      TextRun run = placed.run;
      run.start = place.point({x + placed.x, y});
      run.rotation = text.rotation;
      runs.push_back(std::move(run));
    }
  }
  return runs;
}

}  // namespace importers::dxf
