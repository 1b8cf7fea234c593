# Compiles SOURCES with CHMCMD in the working folder FOLDER and puts the help file at OUTPUT. The compiler ends well although a
# link or a picture leads nowhere and only says so; here that is a failure.
file(REMOVE_RECURSE "${FOLDER}")
file(COPY ${SOURCES} DESTINATION "${FOLDER}")
file(REAL_PATH "${FOLDER}" FOLDER)

execute_process(COMMAND "${CHMCMD}" discbook.hhp
  WORKING_DIRECTORY "${FOLDER}" RESULT_VARIABLE result OUTPUT_VARIABLE messages ERROR_VARIABLE messages)
if(NOT result EQUAL 0 OR messages MATCHES "Warning:|Error:|not found" OR NOT EXISTS "${FOLDER}/discbook.chm")
  message(FATAL_ERROR "The help file cannot be compiled (${result}):\n${messages}")
endif()

execute_process(COMMAND "${PYTHON}" "${CMAKE_CURRENT_LIST_DIR}/relative_topics.py" "${CHMLS}" discbook.chm "${FOLDER}"
  WORKING_DIRECTORY "${FOLDER}" COMMAND_ERROR_IS_FATAL ANY)

get_filename_component(output_folder "${OUTPUT}" DIRECTORY)
file(COPY "${FOLDER}/discbook.chm" DESTINATION "${output_folder}")
file(TOUCH_NOCREATE "${OUTPUT}")
