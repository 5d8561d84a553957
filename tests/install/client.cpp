// What a client's first program looks like, built against an installed tree.
#include <displaylist/displaylist.h>

#include <iostream>

int main() {
  DL::DisplayList list;
  const DL::BoundsTemplate<long> around_dot(3, 4, 3, 4);
  if (list.add(new DL::DLDot(LM_RGB32{0x00FF0000}, {3, 4})) == nullptr) return 1;
  std::cout << "drawables: " << list.m_cOpenDrawables << '\n';
  return list.m_cOpenDrawables == 1 && list.m_openBounds == around_dot ? 0 : 1;
}
