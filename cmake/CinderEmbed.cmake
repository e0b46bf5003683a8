# cinder_embed(presets_resources FILES "${dir}/Sounds.bin" ...)
#
# puts the bytes of files into the target, whatever compiler and processor it is built for: each
# becomes a source with an array in it, made anew when the file changes. The files may be made by
# custom commands of the same directory. A file goes by its name in capitals without what follows the
# last dot. `embeddedFiles()` of EmbeddedFiles.h lists them.
set(CINDER_EMBED_SCRIPT "${CMAKE_CURRENT_LIST_DIR}/EmbedFile.cmake")

function(cinder_embed target)
  cmake_parse_arguments(ARG "" "" "FILES" ${ARGN})
  set(declarations "")
  set(rows "")
  foreach(file IN LISTS ARG_FILES)
    cmake_path(GET file STEM LAST_ONLY name)
    string(TOUPPER "${name}" name)
    string(MAKE_C_IDENTIFIER "${name}" identifier)
    set(source "${CMAKE_CURRENT_BINARY_DIR}/${identifier}.cpp")
    add_custom_command(
      OUTPUT "${source}"
      COMMAND "${CMAKE_COMMAND}" "-DFILE=${file}" "-DIDENTIFIER=${identifier}" "-DSOURCE=${source}"
              -P "${CINDER_EMBED_SCRIPT}"
      DEPENDS "${file}" "${CINDER_EMBED_SCRIPT}"
      COMMENT "Embedding ${name}"
      VERBATIM)
    target_sources(${target} PRIVATE "${source}")
    string(APPEND declarations
           "extern const unsigned char ${identifier}[];\n"
           "extern const std::size_t ${identifier}Size;\n")
    string(APPEND rows "        {\"${name}\", embedded::${identifier}, embedded::${identifier}Size},\n")
  endforeach()
  list(LENGTH ARG_FILES count)
  set(table "${CMAKE_CURRENT_BINARY_DIR}/EmbeddedFiles.cpp")
  file(CONFIGURE OUTPUT "${table}" @ONLY CONTENT
"#include \"presets/resources/EmbeddedFiles.h\"

#include <array>

namespace cinder {

namespace embedded {
@declarations@}

std::span<const EmbeddedFile> embeddedFiles() {
    static const std::array<EmbeddedFile, @count@> files = {{
@rows@    }};
    return files;
}

}
")
  target_sources(${target} PRIVATE "${table}")
endfunction()
