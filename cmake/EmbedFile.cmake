# Run by the commands that cinder_embed() adds.
file(READ "${FILE}" digits HEX)
string(LENGTH "${digits}" size)
math(EXPR size "${size} / 2")
if(size EQUAL 0)
  set(digits 00)  # an array can't be empty
endif()
string(REPEAT "[0-9a-f]" 48 line)
string(REGEX REPLACE "(${line})" "\\1\n" digits "${digits}")
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${digits}")
file(WRITE "${SOURCE}"
"#include <cstddef>

namespace cinder::embedded {

extern const unsigned char ${IDENTIFIER}[];
extern const std::size_t ${IDENTIFIER}Size;

const unsigned char ${IDENTIFIER}[] = {
${bytes}
};
const std::size_t ${IDENTIFIER}Size = ${size};

}
")
