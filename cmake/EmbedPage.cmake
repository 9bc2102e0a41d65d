# Usage: cmake -DPAGE=DIRECTORY -DOUTPUT=DIRECTORY -P EmbedPage.cmake
# Writes OUTPUT/Page.S, which contains the files of the page and their compressed forms, and OUTPUT/PageTable.cpp, which names them.
set(copy "${OUTPUT}/page")
file(REMOVE_RECURSE "${copy}" "${OUTPUT}/page_gzip")
file(COPY "${PAGE}/" DESTINATION "${copy}")
file(MAKE_DIRECTORY "${OUTPUT}/page_gzip")
file(GLOB_RECURSE files LIST_DIRECTORIES false RELATIVE "${copy}" "${copy}/*")
list(SORT files)

set(assembly "")
set(declarations "")
set(rows "")
set(count 0)

# embed(NAME FILE): the bytes of FILE, between the symbols NAME and NAME_end.
function(embed name file)
  string(APPEND assembly ".balign 16\n.global ${name}\n${name}: .incbin \"${file}\"\n.global ${name}_end\n${name}_end: .byte 0\n")
  string(APPEND declarations "extern const char ${name}[];\nextern const char ${name}_end[];\n")
  set(assembly "${assembly}" PARENT_SCOPE)
  set(declarations "${declarations}" PARENT_SCOPE)
endfunction()

foreach(file IN LISTS files)
  file(SHA256 "${copy}/${file}" hash)
  string(SUBSTRING "${hash}" 0 32 version)
  embed(page_file_${count} "${copy}/${file}")
  set(compressed "${OUTPUT}/page_gzip/${count}.gz")
  # Without name and time, so that the same page gives the same program.
  execute_process(COMMAND gzip -9 -n -c "${copy}/${file}" OUTPUT_FILE "${compressed}" COMMAND_ERROR_IS_FATAL ANY)
  file(SIZE "${copy}/${file}" size)
  file(SIZE "${compressed}" compressed_size)
  math(EXPR worth "${size} * 9 / 10")
  set(gzip "{}")
  if(compressed_size LESS worth)
    embed(page_gzip_${count} "${compressed}")
    set(gzip "Between(page_gzip_${count}, page_gzip_${count}_end)")
  endif()
  string(APPEND rows "        {\"${file}\", Between(page_file_${count}, page_file_${count}_end), ${gzip}, \"${version}\"},\n")
  math(EXPR count "${count} + 1")
endforeach()

file(WRITE "${OUTPUT}/Page.S" "#if defined(__ELF__)\n.section .rodata\n#else\n.section .rdata,\"dr\"\n#endif\n${assembly}"
  "#if defined(__ELF__)\n.section .note.GNU-stack,\"\",@progbits\n#endif\n")
file(WRITE "${OUTPUT}/PageTable.cpp" "#include \"controller_web/http/Assets.h\"

extern \"C\" {
${declarations}}

namespace web {
namespace {

std::string_view Between(const char* begin, const char* end) {
    return {begin, static_cast<std::size_t>(end - begin)};
}

} // namespace

std::span<const Asset> BuiltInAssets() {
    static const Asset assets[] = {
${rows}    };
    return assets;
}

} // namespace web
")
