#include "importers/dxf/fonts.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace importers::dxf {

namespace {

struct KnownFile {
  std::wstring_view start;
  std::wstring_view family;
};

/// Files that are not called like their family.
constexpr std::array<KnownFile, 10> known_files{{{L"arialn", L"Arial Narrow"},
                                                 {L"arial", L"Arial"},
                                                 {L"times", L"Times New Roman"},
                                                 {L"cour", L"Courier New"},
                                                 {L"trebuc", L"Trebuchet MS"},
                                                 {L"pala", L"Palatino Linotype"},
                                                 {L"gara", L"Garamond"},
                                                 {L"comic", L"Comic Sans MS"},
                                                 {L"lucon", L"Lucida Console"},
                                                 {L"swiss", L"Arial"}}};

wchar_t lower(wchar_t c) {
  return c >= 'A' && c <= 'Z' ? static_cast<wchar_t>(c - 'A' + 'a') : c;
}

bool take_end(std::wstring& name, std::wstring_view end) {
  if (!name.ends_with(end)) return false;
  name.resize(name.size() - end.size());
  return true;
}

/// Takes the words that name a style off the end of a name such as
/// "dejavuserif-boldoblique".
void take_style(std::wstring& name, FontChoice& choice) {
  choice.is_italic = take_end(name, L"italic") || take_end(name, L"oblique");
  choice.is_bold = take_end(name, L"bold");
  if (!choice.is_bold && !choice.is_italic) take_end(name, L"regular");
  take_end(name, L"-");
}

/// The style of "arialbd", "timesi", "courbi": what follows the start.
void take_short_style(std::wstring_view rest, FontChoice& choice) {
  choice.is_bold = rest.starts_with('b');
  choice.is_italic = rest == L"i" || rest == L"bi";
}

}  // namespace

FontChoice font_of_file(const std::wstring& file) {
  const std::size_t folder = file.find_last_of(L"\\/");
  std::wstring name = folder == std::wstring::npos ? file : file.substr(folder + 1);
  std::transform(name.begin(), name.end(), name.begin(), lower);
  const std::size_t dot = name.rfind('.');
  if (dot == std::wstring::npos || dot == 0) return {};
  const std::wstring ending = name.substr(dot);
  if (ending != L".ttf" && ending != L".ttc" && ending != L".otf") return {};
  name.resize(dot);
  FontChoice choice;
  for (const KnownFile& known : known_files) {
    if (!name.starts_with(known.start)) continue;
    take_short_style(std::wstring_view(name).substr(known.start.size()), choice);
    choice.family = known.family;
    return choice;
  }
  take_style(name, choice);
  if (!name.empty() && name[0] >= 'a' && name[0] <= 'z') {
    name[0] = static_cast<wchar_t>(name[0] - 'a' + 'A');
  }
  choice.family = name;
  return choice;
}

}  // namespace importers::dxf
