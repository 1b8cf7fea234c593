# Compiler settings that every target of the project shares.
add_library(discbook_options INTERFACE)
target_compile_definitions(discbook_options INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING QT_NO_NARROWING_CONVERSIONS_IN_CONNECT)

if(MSVC)
  target_compile_options(discbook_options INTERFACE /W4 /utf-8 /permissive- $<$<BOOL:${DISCBOOK_WERROR}>:/WX>)
else()
  target_compile_options(discbook_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow
    -Wno-trigraphs # unknown dates read "????-??-??"; C++20 has no trigraphs any more
    $<$<BOOL:${DISCBOOK_WERROR}>:-Werror>
    # No function is replaced from outside, so GCC may inline those of one file into one another.
    $<$<CXX_COMPILER_ID:GNU>:-fno-semantic-interposition>)
endif()

if(DISCBOOK_SANITIZE)
  target_compile_options(discbook_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  target_link_options(discbook_options INTERFACE -fsanitize=address,undefined)
endif()

if(DISCBOOK_BUILD_FUZZ)
  # The fuzzer is led by what its input reaches.
  target_compile_options(discbook_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
