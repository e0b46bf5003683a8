#include "cinder/audio/SoundFile.h"

namespace cinder {

std::string soundFileError(SNDFILE* file) {
    std::string text = sf_strerror(file);
    while (!text.empty() && (text.back() == '.' || text.back() == '\n' || text.back() == ' '))
        text.pop_back();
    return text;
}

}  // namespace cinder
