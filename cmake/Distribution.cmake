# What a distribution of the program sets for itself, all in one place.
set(KELPA_FEED_URL "" CACHE STRING "Address of the update feed; empty switches updates off")
set(KELPA_FEEDBACK_MAILBOX "feedback@kelpa.example" CACHE STRING "Who receives feedback mail")
set(KELPA_HOMEPAGE "https://kelpa.example" CACHE STRING "The program's web page; its folder pictures/ has those of docs/pictures")
set(KELPA_RELEASE_NOTES_URL "https://kelpa.example/release-notes" CACHE STRING "The release-notes web page")
set(KELPA_COPYRIGHT_HOLDER "The Kelpa Authors" CACHE STRING "Who holds the copyright")
set(KELPA_BUILD_NUMBER "1" CACHE STRING "The build number behind the version")
set(KELPA_RELEASE_DATE "2026-11-21" CACHE STRING "The day of this version, year-month-day")

set(KELPA_DISPLAY_NAME "Kelpa")
set(KELPA_IDENTIFIER "app.orvane.Kelpa")
set(KELPA_LOGIN_ITEM_IDENTIFIER "app.orvane.Kelpa.LoginItem")
