# Copies FILE to FOLDER unless FOLDER has a file of that name: a host with several components has its own components.ini.
cmake_minimum_required(VERSION 3.25)
get_filename_component(name "${FILE}" NAME)
if(NOT EXISTS "${FOLDER}/${name}")
    file(COPY "${FILE}" DESTINATION "${FOLDER}")
endif()
