# Generates a source file that contains the shader files byte for byte, as the table declared in
# render/embedded_shaders.h. CMake generates it again when a shader file changes.
function(embed_shaders output)
  set(SHADER_ENTRIES "")
  foreach(file IN LISTS ARGN)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
    get_filename_component(name ${file} NAME)
    file(READ ${file} text)
    string(APPEND SHADER_ENTRIES "    {\"${name}\", R\"GLSL(${text})GLSL\"},\n")
  endforeach()
  list(LENGTH ARGN SHADER_COUNT)
  file(CONFIGURE OUTPUT ${output} @ONLY NEWLINE_STYLE UNIX CONTENT
"#include \"render/embedded_shaders.h\"

const EmbeddedShader EMBEDDED_SHADERS[] = {
@SHADER_ENTRIES@};
const std::size_t EMBEDDED_SHADER_COUNT = @SHADER_COUNT@;
")
endfunction()
