// Which Fendix a rewritten line names: the launcher ran the one beside its own real file,
// so a launcher named by a path gives the Fendix in that path's directory once symbolic
// links are resolved, and a bare "tovak" gives a bare "Fendix" found through PATH.
#ifndef TOVAK_TRANSLATE_FENDIX_LOCATION_H
#define TOVAK_TRANSLATE_FENDIX_LOCATION_H

#include <string>

namespace translate {

struct FendixLocation {
  std::string program;  // what the rewritten line starts with
  std::string whyNot;   // when not empty, no Fendix can be named for this launcher
};

// launcher is the program word as the shell reads it; chosen, when not empty, wins.
FendixLocation locateFendix(const std::string& launcher, const std::string& chosen);

}  // namespace translate

#endif  // TOVAK_TRANSLATE_FENDIX_LOCATION_H
