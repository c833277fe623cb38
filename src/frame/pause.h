// When a call that may use two threads is not to.
#pragma once

namespace orpsp {

// Runs `alone` and says so, unless a call on several threads is to be tried now. It is not if helpers are busy, or for
// a while after sharing has cost more than it gained.
using AloneFunction = void (*)(const void* call);
bool ranAlone(AloneFunction alone, const void* call);

template <class Alone>
bool ranAlone(const Alone& alone) {
  return ranAlone([](const void* opaque) { (*static_cast<const Alone*>(opaque))(); }, &alone);
}

}  // namespace orpsp
