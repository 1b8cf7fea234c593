# Copies each of FILES into FOLDER unless a file of that name is there.
foreach(file IN LISTS FILES)
  get_filename_component(name "${file}" NAME)
  if(NOT EXISTS "${FOLDER}/${name}")
    file(COPY "${file}" DESTINATION "${FOLDER}")
  endif()
endforeach()
