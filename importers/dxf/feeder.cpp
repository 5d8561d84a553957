#include "importers/dxf/feeder.h"

#include <algorithm>
#include <cmath>
#include <sstream>
#include <string_view>

namespace importers::dxf {

namespace {

constexpr std::size_t longest_line = DL_DXF_MAXLINE - 24;

/// What dxflib makes calls of.
constexpr std::string_view entity_names[] = {
    "POINT",  "LINE",   "POLYLINE", "LWPOLYLINE", "VERTEX", "SPLINE",    "ARC",    "ELLIPSE",
    "CIRCLE", "INSERT", "TEXT",     "MTEXT",      "ATTRIB", "DIMENSION", "LEADER", "HATCH",
    "SOLID",  "TRACE",  "3DFACE",   "SEQEND",     "XLINE",  "RAY",       "BLOCK",  "ENDBLK"};

/// What leaves nothing to be seen: forms for attributes, windows of paper space.
constexpr std::string_view silent_names[] = {"ATTDEF", "VIEWPORT"};

template <std::size_t N>
bool contains(const std::string_view (&names)[N], const std::string& name) {
  return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

bool has_unusable_number(const Record& record) {
  return std::any_of(record.pairs.begin(), record.pairs.end(), [](const Pair& pair) {
    if (!is_real_code(pair.code)) return false;
    const std::optional<double> number = to_real(pair.value);
    return !number || std::fabs(*number) > Sketch::largest_coordinate;
  });
}

/// A count that the record states, as it really is.
struct Count {
  int code;
  int counted;  ///< the code of what is counted
};

std::vector<Count> counts_of(const std::string& name) {
  if (name == "LWPOLYLINE") return {{90, 10}};
  if (name == "SPLINE") return {{72, 40}, {73, 10}, {74, 11}};
  if (name == "LEADER") return {{76, 10}};
  return {};
}

/// Whether dxflib gets the pair: not what belongs to other programs, nor what
/// the receiver takes from the record itself.
bool is_fed(const Record& record, const Pair& pair) {
  if (pair.code < 0 || pair.code >= 999 || pair.code == 102) return false;
  if (record.name == "HATCH") {
    return (pair.code < 40 && pair.code != 11 && pair.code != 21) || pair.code == 62 ||
           pair.code == 67 || pair.code == 420 || (pair.code >= 210 && pair.code <= 230);
  }
  return true;
}

}  // namespace

void Feeder::feed_definition(const Record& record) {
  const bool is_known = record.name == "LAYER" || record.name == "LTYPE" || record.name == "STYLE";
  if (is_known) return feed(record);
  begin("ENDTAB");
}

void Feeder::feed_entity(const Record& record) {
  const bool is_known = contains(entity_names, record.name);
  if (is_known && !has_unusable_number(record)) return feed(record);
  begin("ENDSEC");
  if (is_known) {
    m_receiver.note_unusable(record);
  } else if (!contains(silent_names, record.name)) {
    m_receiver.note_unknown(record);
  }
}

void Feeder::flush() {
  begin("ENDSEC");
  m_receiver.open({});
}

void Feeder::begin(const std::string& name) {
  add(0, name);
  run(1);
}

void Feeder::feed(const Record& record) {
  begin(record.name);
  m_receiver.open(record);
  const std::vector<Count> counts = counts_of(record.name);
  std::size_t fed = counts.size();
  for (const Count& count : counts) {
    add(count.code, std::to_string(record.count(count.counted)));
  }
  for (const Pair& pair : record.pairs) {
    const auto is_it = [&](const Count& count) { return count.code == pair.code; };
    if (std::any_of(counts.begin(), counts.end(), is_it) || !is_fed(record, pair)) continue;
    const bool is_text = record.name == "MTEXT" && (pair.code == 1 || pair.code == 3);
    fed += is_text ? add_chunks(pair) : 0;
    if (is_text) continue;
    add(pair.code, pair.value);
    ++fed;
  }
  run(fed);
}

std::size_t Feeder::add_chunks(const Pair& pair) {
  constexpr int chunk_code = 3;
  std::size_t added = 1;
  std::string_view rest = pair.value;
  for (; rest.size() > longest_line; rest.remove_prefix(longest_line)) {
    add(chunk_code, rest.substr(0, longest_line));
    ++added;
  }
  add(pair.code, rest);
  return added;
}

void Feeder::add(int code, std::string_view value) {
  m_text += std::to_string(code);
  m_text += '\n';
  m_text += value.substr(0, longest_line);
  m_text += '\n';
}

void Feeder::run(std::size_t pairs) {
  std::istringstream stream(m_text);
  for (std::size_t i = 0; i < pairs; ++i) m_dxf.readDxfGroups(stream, &m_receiver);
  m_text.clear();
}

}  // namespace importers::dxf
