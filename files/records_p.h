#pragma once

#include <cstdint>
#include <string>

#include "displaylist/catalogue.h"
#include "files/reading_p.h"
#include "files/stretched_text.h"
#include "files/writing_p.h"

/// What files keep of the classes that streams do not hold, or not exactly: the
/// fields of a record, between its tag and the record of the class's parent.
namespace files {

/// Reads or writes one record of a T. `Parent` is the class whose record
/// follows the fields, and `kParentTag` what that begins with, 0 for no tag.
template <class T>
class Record;

/// A class that adds nothing to the record of its parent.
template <class P, std::uint32_t ParentTag = 0>
class PlainRecord {
 public:
  using Parent = P;
  static constexpr std::uint32_t kParentTag = ParentTag;
  /// Whether the colour is a rendition although the class is no palettized one.
  static constexpr bool kHasRendition = false;

  void write(const DL::Drawable&, ZtFsStream&, Writing&) {}
  /// False when the fields make no sense.
  bool read(DL::Drawable&, Reading&) { return true; }
  /// Mends what the parent's record, which has been read, cannot hold.
  void complete(DL::Drawable&, Reading&) {}
};

template <>
class Record<DL::DLPolygon> : public PlainRecord<DL::Polything> {};

template <>
class Record<DL::DLPolymarker> : public PlainRecord<DL::Polything> {};

template <>
class Record<DL::DLColorizedDot> : public PlainRecord<DL::DLDot, DL::tag::kDLDot> {
 public:
  void write(const DL::DLColorizedDot& dot, ZtFsStream& stream, Writing& writing);
  bool read(DL::DLColorizedDot& dot, Reading& reading);
};

template <>
class Record<DL::DLColorizedEllipse>
    : public PlainRecord<DL::DLEllipticalArc, DL::tag::kDLEllipticalArc> {
 public:
  void write(const DL::DLColorizedEllipse& ellipse, ZtFsStream& stream, Writing& writing);
  bool read(DL::DLColorizedEllipse& ellipse, Reading& reading);
};

template <>
class Record<DL::DLRowOfDots> : public PlainRecord<DL::Drawable> {
 public:
  void write(const DL::DLRowOfDots& row, ZtFsStream& stream, Writing& writing);
  bool read(DL::DLRowOfDots& row, Reading& reading);
};

template <>
class Record<DL::DLImage> : public PlainRecord<DL::Drawable> {
 public:
  void write(const DL::DLImage& drawable, ZtFsStream& stream, Writing& writing);
  bool read(DL::DLImage& drawable, Reading& reading);
};

/// What lies at the vertices of a class with an array of points. Its count is
/// told twice: here and with the points.
class VertexRecord : public PlainRecord<DL::Polything> {
 public:
  /// Two arrays of different lengths are a damaged file.
  void complete(const DL::Polything& points, Reading& reading) const;

 protected:
  void write_count(const DL::Polything& points, ZtFsStream& stream);
  bool read_count(Reading& reading);

  std::int32_t m_count = 0;  ///< 0 at least
};

template <>
class Record<DL::DLGouraudPolyline> : public VertexRecord {
 public:
  void write(const DL::DLGouraudPolyline& line, ZtFsStream& stream, Writing& writing);
  bool read(DL::DLGouraudPolyline& line, Reading& reading);
};

template <>
class Record<DL::DLGouraudPolytriangle> : public VertexRecord {
 public:
  void write(const DL::DLGouraudPolytriangle& strip, ZtFsStream& stream, Writing& writing);
  bool read(DL::DLGouraudPolytriangle& strip, Reading& reading);
};

template <>
class Record<DL::DLTexturedPolytriangle> : public VertexRecord {
 public:
  void write(const DL::DLTexturedPolytriangle& strip, ZtFsStream& stream, Writing& writing);
  bool read(DL::DLTexturedPolytriangle& strip, Reading& reading);
};

/// A text's own record cuts the name of its font and multibyte strings, and
/// forgets which items of the font are given.
template <>
class Record<DL::DLText> : public PlainRecord<DL::DLText, DL::tag::kDLText> {
 public:
  void write(DL::DLText& text, ZtFsStream& stream, Writing& writing);
  bool read(DL::DLText& text, Reading& reading);
  void complete(DL::DLText& text, Reading& reading);

 private:
  void give_bytes(DL::DLText& text, const Reading& reading) const;

  LM_Font m_font;
  std::string m_bytes;  ///< of a multibyte string that its own record cuts
};

template <>
class Record<StretchedText> : public Record<DL::DLText> {
 public:
  using Parent = StretchedText;
  static constexpr std::uint32_t kParentTag = StretchedText::kTag;
};

template <>
class Record<DL::DrawableDisplayList> : public PlainRecord<DL::Drawable> {
 public:
  static constexpr bool kHasRendition = true;

  void write(DL::DrawableDisplayList& nested, ZtFsStream& stream, Writing& writing);
  bool read(DL::DrawableDisplayList& nested, Reading& reading);
  void complete(DL::DrawableDisplayList& nested, Reading& reading);

 private:
  std::uint32_t m_has_rendition = 0;
};

}  // namespace files
