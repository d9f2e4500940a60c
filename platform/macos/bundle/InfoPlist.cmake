# What the bundles of the application and of its login-item helper say of themselves, from the values in
# cmake/Distribution.cmake. As a script it writes both into a folder, which the tests do on every system:
#     cmake -D VERSION=1.2.3 -D OUTPUT=FOLDER [-D KELPA_...=...] -P InfoPlist.cmake
set(KELPA_BUNDLE_TEMPLATES ${CMAKE_CURRENT_LIST_DIR})

# The text with what has a meaning in XML taken out of it.
function(kelpa_xml_text text result)
    string(REPLACE "&" "&amp;" text "${text}")
    string(REPLACE "<" "&lt;" text "${text}")
    string(REPLACE ">" "&gt;" text "${text}")
    set(${result} "${text}" PARENT_SCOPE)
endfunction()

# Writes Info.plist and LoginItem-Info.plist into `folder`.
function(kelpa_info_plists folder version)
    kelpa_xml_text("${version}" VERSION)
    foreach(name IN ITEMS DISPLAY_NAME IDENTIFIER LOGIN_ITEM_IDENTIFIER BUILD_NUMBER COPYRIGHT_HOLDER FEED_URL UPDATE_PUBLIC_KEY)
        kelpa_xml_text("${KELPA_${name}}" ${name})
    endforeach()
    # A key of the catalogues; InfoPlist.strings has it in every language.
    set(MAIL_USAGE "Kelpa hands messages to its makers over to your mail program.")
    set(UPDATES "")
    if(KELPA_FEED_URL)
        set(UPDATES "\t<key>SUFeedURL</key>\n\t<string>${FEED_URL}</string>\n\t<key>SUPublicEDKey</key>\n\t<string>${UPDATE_PUBLIC_KEY}</string>\n")
    endif()
    foreach(template IN ITEMS Info.plist LoginItem-Info.plist)
        configure_file(${KELPA_BUNDLE_TEMPLATES}/${template}.in ${folder}/${template} @ONLY)
    endforeach()
endfunction()

if(CMAKE_SCRIPT_MODE_FILE STREQUAL CMAKE_CURRENT_LIST_FILE)
    include(${CMAKE_CURRENT_LIST_DIR}/../../../cmake/Distribution.cmake)
    kelpa_info_plists(${OUTPUT} "${VERSION}")
endif()
