# SPDX-License-Identifier: MIT
# Installs the package and moves it to PREFIX, which was never named to the build: whatever is found
# there later does not depend on where it was installed. Takes also BUILD_FOLDER and CONFIGURATION.
cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE ${PREFIX} ${PREFIX}.staging)
set(configuration "")
if(CONFIGURATION)
    set(configuration --config ${CONFIGURATION})
endif()
execute_process(
    COMMAND ${CMAKE_COMMAND} --install ${BUILD_FOLDER} ${configuration} --prefix ${PREFIX}.staging
    COMMAND_ERROR_IS_FATAL ANY)
file(RENAME ${PREFIX}.staging ${PREFIX})
