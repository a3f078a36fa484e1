# Layering that the build checks.
#
# A layer's include directory is not the repository root but a folder of its own in the
# build tree, holding a link to each header of the layer's own sources under its path in the
# repository ("Range/HandRange.h"). A target sees its layer's folder and, through what it
# links, the folders of the layers below. So the includes keep their "Folder/File.h" form,
# and an include that runs up a layer finds no file and fails the build, at the line that
# wrote it.
#
#   quorvane_layer_include_dir(<target> <out-var>)  the folder of a layer
#   quorvane_stage_layer_headers(<target>)          links its headers; call after every
#                                                   folder has added its sources

function(quorvane_layer_include_dir target out)
    set(${out} ${CMAKE_BINARY_DIR}/layers/${target} PARENT_SCOPE)
endfunction()

function(quorvane_stage_layer_headers target)
    quorvane_layer_include_dir(${target} stage)
    get_target_property(sources ${target} SOURCES)
    set(wanted)
    foreach(source IN LISTS sources)
        if(NOT source MATCHES "\\.h$")
            continue()
        endif()
        get_filename_component(absolute ${source} ABSOLUTE BASE_DIR ${CMAKE_SOURCE_DIR})
        file(RELATIVE_PATH relative ${CMAKE_SOURCE_DIR} ${absolute})
        if(relative MATCHES "^\\.\\.")
            continue() # generated into the build tree, not a repository header
        endif()
        set(link ${stage}/${relative})
        list(APPEND wanted ${link})
        if(IS_SYMLINK ${link})
            file(READ_SYMLINK ${link} points_to)
            if(points_to STREQUAL absolute)
                continue()
            endif()
            file(REMOVE ${link})
        endif()
        get_filename_component(folder ${link} DIRECTORY)
        file(MAKE_DIRECTORY ${folder})
        file(CREATE_LINK ${absolute} ${link} SYMBOLIC)
    endforeach()
    # The layer's sources, one absolute path a line, for the test that checks the includes.
    set(listing)
    foreach(source IN LISTS sources)
        get_filename_component(absolute ${source} ABSOLUTE BASE_DIR ${CMAKE_SOURCE_DIR})
        if(absolute MATCHES "\\.(h|cpp)$")
            string(APPEND listing "${absolute}\n")
        endif()
    endforeach()
    file(WRITE ${stage}.sources "${listing}")
    # Links of headers that left the layer (moved, deleted) must not stay reachable.
    file(GLOB_RECURSE present LIST_DIRECTORIES false ${stage}/*)
    foreach(link IN LISTS present)
        if(IS_SYMLINK ${link} AND NOT link IN_LIST wanted)
            file(REMOVE ${link})
        endif()
    endforeach()
endfunction()
