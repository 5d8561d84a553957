#include "lumen/vector/vector_page_p.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>

#include <cerrno>
#include <cmath>
#include <cstring>
#include <new>
#include <utility>

#include "lumen/vector/svg_clip_rules_p.h"
#include "lumen/vector/vector_color_p.h"

namespace lumen {
namespace {

constexpr double points_of_unit = 0.75;

void collect(const LM_Contour& from, Contour& to) {
  to.clear();
  if (from.points == nullptr) return;
  for (std::int32_t i = 0; i < from.count; ++i) {
    const LM_Point& point = from.points[i];
    if (!std::isfinite(point.x) || !std::isfinite(point.y)) continue;
    to.push_back({point.x + 0.5, point.y + 0.5});
  }
}

}  // namespace

VectorPage::VectorPage(VectorFormat format, std::int32_t width, std::int32_t height,
                       const std::string& path)
    : m_format(format), m_failure("cannot write '" + path + "': "), m_file(path) {
  const auto is_side = [](std::int32_t side) {
    return side >= 1 && side <= VectorDevice::max_side;
  };
  if (m_file.stream() == nullptr) {
    m_result = m_failure + std::strerror(errno);
  } else if (!is_side(width) || !is_side(height)) {
    m_result = m_failure + "a side of the page must have 1 to " +
               std::to_string(VectorDevice::max_side) + " units";
  } else {
    open(width, height);
  }
}

VectorPage::~VectorPage() {
  forget();
}

void VectorPage::open(std::int32_t width, std::int32_t height) {
  m_page = {0, width - 1, 0, height - 1};
  m_visible = m_page;
  if (m_format == VectorFormat::pdf) {
    m_surface = cairo_pdf_surface_create_for_stream(
        &VectorPage::write, this, width * points_of_unit, height * points_of_unit);
  } else {
    m_surface = cairo_svg_surface_create_for_stream(&VectorPage::write, this, width, height);
    cairo_svg_surface_set_document_unit(m_surface, CAIRO_SVG_UNIT_PX);
  }
  m_cairo = cairo_create(m_surface);
  if (m_format == VectorFormat::pdf) cairo_scale(m_cairo, points_of_unit, points_of_unit);
  cairo_set_line_join(m_cairo, CAIRO_LINE_JOIN_ROUND);
  cairo_save(m_cairo);
}

cairo_status_t VectorPage::write(void* page, const unsigned char* data, unsigned int size) {
  auto* self = static_cast<VectorPage*>(page);
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  if (self->m_format == VectorFormat::svg) return self->keep(bytes);
  return self->write_to_file(bytes) ? CAIRO_STATUS_SUCCESS : CAIRO_STATUS_WRITE_ERROR;
}

cairo_status_t VectorPage::keep(std::string_view bytes) try {
  m_svg.append(bytes);
  return CAIRO_STATUS_SUCCESS;
} catch (const std::bad_alloc&) {  // not through the frames of a C library
  return CAIRO_STATUS_NO_MEMORY;
}

bool VectorPage::write_to_file(std::string_view bytes) {
  if (std::fwrite(bytes.data(), 1, bytes.size(), m_file.stream()) == bytes.size()) return true;
  if (m_write_error == 0) m_write_error = errno;
  return false;
}

const std::string& VectorPage::finish() {
  if (!m_finished && m_cairo != nullptr) {
    const std::string reason = close();
    if (!reason.empty()) m_result = m_failure + reason;
  }
  m_finished = true;
  return m_result;
}

std::string VectorPage::close() {
  end_clip();
  const cairo_status_t drawn = cairo_status(m_cairo);
  cairo_surface_finish(m_surface);
  const cairo_status_t written = cairo_surface_status(m_surface);
  forget();
  if (m_format == VectorFormat::svg) {
    write_to_file(m_svg_texts.put_into(with_clip_rules(std::move(m_svg))));
  }
  if (m_write_error != 0) return std::strerror(m_write_error);
  if (drawn != CAIRO_STATUS_SUCCESS) return cairo_status_to_string(drawn);
  if (written != CAIRO_STATUS_SUCCESS) return cairo_status_to_string(written);
  return m_file.put_in_place() ? "" : std::strerror(errno);
}

void VectorPage::forget() {
  cairo_destroy(m_cairo);
  cairo_surface_destroy(m_surface);
  m_cairo = nullptr;
  m_surface = nullptr;
}

bool VectorPage::enter(const LM_Rendition& rendition) {
  if (m_cairo == nullptr) return false;
  const LM_Clip_Rectangle visible = common_part(m_page, rendition.clip_rectangle());
  if (is_empty(visible)) return false;
  const LM_Contour_Set_Data* clip = rendition.device_clip();
  if (visible != m_visible || clip != m_clip.get()) set_clip(visible, clip);
  return true;
}

void VectorPage::set_clip(const LM_Clip_Rectangle& visible, const LM_Contour_Set_Data* clip) {
  end_clip();
  cairo_save(m_cairo);
  m_visible = visible;
  m_clip = LM_Handle<const LM_Contour_Set_Data>(clip);
  if (visible != m_page) {
    cairo_rectangle(m_cairo, visible.min_x, visible.min_y, visible.max_x - visible.min_x + 1,
                    visible.max_y - visible.min_y + 1);
    cairo_clip(m_cairo);
  }
  if (clip == nullptr) return;
  for (std::int32_t i = 0; i < clip->contour_count(); ++i) {
    collect(clip->contour(i), m_contour);
    add(m_contour);
  }
  cairo_set_fill_rule(m_cairo, clip->fill_rule() == LM_Fill_Rule::even_odd
                                   ? CAIRO_FILL_RULE_EVEN_ODD
                                   : CAIRO_FILL_RULE_WINDING);
  cairo_clip(m_cairo);
  // Left to Cairo, each shape would have a copy of the clip of its own.
  cairo_push_group(m_cairo);
  cairo_reset_clip(m_cairo);
}

void VectorPage::end_clip() {
  if (m_clip) {
    cairo_pop_group_to_source(m_cairo);
    cairo_paint(m_cairo);
  }
  m_clip = nullptr;
  cairo_restore(m_cairo);
}

void VectorPage::set_ink(LM_RGB32 color) {
  set_source(m_cairo, page_color(color));
}

}  // namespace lumen
