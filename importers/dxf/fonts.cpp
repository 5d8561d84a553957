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

}  // namespace

std::wstring family_of_file(const std::wstring& file) {
  const std::size_t folder = file.find_last_of(L"\\/");
  std::wstring name = folder == std::wstring::npos ? file : file.substr(folder + 1);
  std::transform(name.begin(), name.end(), name.begin(), lower);
  const std::size_t dot = name.rfind('.');
  if (dot == std::wstring::npos || dot == 0) return {};
  const std::wstring ending = name.substr(dot);
  if (ending != L".ttf" && ending != L".ttc" && ending != L".otf") return {};
  for (const KnownFile& known : known_files) {
    if (name.starts_with(known.start)) return std::wstring(known.family);
  }
  name.resize(dot);
  if (name[0] >= 'a' && name[0] <= 'z') name[0] = static_cast<wchar_t>(name[0] - 'a' + 'A');
  return name;
}

}  // namespace importers::dxf
