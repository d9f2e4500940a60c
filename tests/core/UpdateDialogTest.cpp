// What a person sees of updates: every text as its own key, because there are no translations here.
#include "ui/UpdateDialog.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace kelpa;

namespace {

using Lines = std::vector<std::string>;

struct Journal final : UpdateWindow, UpdateWork {
    void setPage(const UpdatePage& page) override {
        std::string line = "page " + page.headline;
        if (!page.text.empty())
            line += " | " + page.text;
        if (page.progress != UpdatePage::Progress::None)
            line += page.progress == UpdatePage::Progress::Busy
                        ? " | busy"
                        : " | " + std::to_string(static_cast<int>(page.fraction * 100)) + "%";
        if (!page.notes.empty())
            line += " | <" + page.notes + " at " + page.notesLink + ">";
        for (const auto& button : page.buttons)
            line += " [" + button.text + "]";
        lines.push_back(line);
    }
    void present(Attention attention) override {
        lines.push_back(attention == Attention::Wanted ? "present" : "present quietly");
    }
    void setClient(UpdateWindowClient* told) override { client = told; }
    void close() override { lines.push_back("close"); }
    void startCheck() override { lines.push_back("check"); }
    void download() override { lines.push_back("download"); }
    void stop() override { lines.push_back("stop"); }
    void openPackage(const std::string& path) override { lines.push_back("open " + path); }
    void setSkipped(const std::string& version) override { skipped = version; }
    [[nodiscard]] bool isSkipped(const std::string& version) const override { return version == skipped; }

    Lines take() { return std::exchange(lines, {}); }
    Lines lines;
    std::string skipped;
    UpdateWindowClient* client = nullptr;
};

class UpdateDialogTest : public testing::Test {
  protected:
    Journal journal;
    UpdateDialog dialog{UpdateSupport::Feed, "0.1.0", journal, journal};
    const Release release{"7", "0.2.0", "https://kelpa.example/notes", 3'000'000};
    const std::string looking = "page Looking for updates | busy [Cancel]";
    const std::string offered =
        "page A new version of Kelpa is available | Version 0.2.0 is available; you have 0.1.0. | "
        "<Release Notes at https://kelpa.example/notes> [Skip This Version] [Later] [Install]";
    const std::string ready =
        "page The update is ready | The program that installs software on this computer "
        "opens it now. Once it is installed, quit Kelpa and start it again. [OK]";
};

} // namespace

TEST_F(UpdateDialogTest, WhoAsksIsToldWhatIsGoingOnAndHowItEnds) {
    dialog.asked();
    EXPECT_EQ(journal.take(), (Lines{looking, "present", "check"}));
    dialog.latest();
    EXPECT_EQ(journal.take(), (Lines{"page Kelpa is up to date | You have the newest version, 0.1.0. [OK]"}));
    dialog.asked();
    EXPECT_EQ(journal.take(), (Lines{looking, "present", "check"}));
    dialog.asked();
    EXPECT_EQ(journal.take(), (Lines{"present"}));
    dialog.outgrown();
    EXPECT_EQ(journal.take(),
              (Lines{"page A newer system is needed | There is a new version of Kelpa, but not "
                     "for this version of your system. [OK]"}));
    journal.client->act(UpdateAction::Close);
    EXPECT_EQ(journal.take(), (Lines{"close"}));
}

TEST_F(UpdateDialogTest, ACheckByItselfIsSeenOnlyWhenItFindsSomething) {
    dialog.due();
    dialog.latest();
    dialog.due();
    dialog.outgrown();
    dialog.due();
    dialog.failed(UpdateFailure::Unreachable);
    EXPECT_EQ(journal.take(), (Lines{"check", "check", "check"}));
    dialog.due();
    dialog.found(release);
    EXPECT_EQ(journal.take(), (Lines{"check", offered, "present quietly"}));
    // Nobody has answered yet.
    dialog.due();
    EXPECT_EQ(journal.take(), Lines{});
    journal.client->act(UpdateAction::Later);
    EXPECT_EQ(journal.take(), (Lines{"stop", "close"}));
    dialog.due();
    dialog.found(release);
    EXPECT_EQ(journal.take(), (Lines{"check", offered, "present quietly"}));
}

TEST_F(UpdateDialogTest, WhoAsksDuringACheckByItselfGetsItsAnswer) {
    dialog.due();
    dialog.asked();
    EXPECT_EQ(journal.take(), (Lines{"check", looking, "present"}));
    dialog.failed(UpdateFailure::Slow);
    EXPECT_EQ(journal.take(),
              (Lines{"page The update did not work | The update server took too long to answer. "
                     "Please try again later. [OK]"}));
}

TEST_F(UpdateDialogTest, ASkippedVersionComesBackOnlyWhenAskedFor) {
    dialog.asked();
    dialog.found(release);
    journal.client->act(UpdateAction::Skip);
    EXPECT_EQ(journal.take(), (Lines{looking, "present", "check", offered, "stop", "close"}));
    dialog.due();
    dialog.found(release);
    EXPECT_EQ(journal.take(), (Lines{"check", "stop"}));
    dialog.due();
    dialog.found({"8", "0.2.0", release.notes, 1});
    EXPECT_EQ(journal.take(), (Lines{"check", offered, "present quietly"}));
    journal.client->act(UpdateAction::Later);
    journal.take();
    dialog.asked();
    dialog.found(release);
    EXPECT_EQ(journal.take(), (Lines{looking, "present", "check", offered}));
}

TEST_F(UpdateDialogTest, AnUpdateIsFetchedAndHandedOver) {
    dialog.asked();
    dialog.found(release);
    journal.take();
    journal.client->act(UpdateAction::Install);
    dialog.received(1'549'999);
    EXPECT_EQ(journal.take(),
              (Lines{"page Downloading version 0.2.0 | 0.0 of 3.0 MB | 0% [Cancel]", "download",
                     "page Downloading version 0.2.0 | 1.5 of 3.0 MB | 51% [Cancel]"}));
    journal.client->act(UpdateAction::Install);
    dialog.due();
    dialog.asked();
    dialog.ready("/cache/kelpa.deb");
    EXPECT_EQ(journal.take(), (Lines{"present", ready, "open /cache/kelpa.deb"}));
    dialog.asked();
    EXPECT_EQ(journal.take(), (Lines{"present"}));
    dialog.packageOpened(true);
    EXPECT_EQ(journal.take(), Lines{});
    journal.client->act(UpdateAction::Close);
    EXPECT_EQ(journal.take(), Lines{"close"});
}

TEST_F(UpdateDialogTest, WithoutAnInstallerThePackageIsNotLost) {
    dialog.asked();
    dialog.found(release);
    journal.client->act(UpdateAction::Install);
    dialog.ready("/cache/kelpa.deb");
    journal.take();
    dialog.packageOpened(false);
    EXPECT_EQ(journal.take(),
              (Lines{"page No program installs the update | The download was checked and lies in this file:\n"
                     "/cache/kelpa.deb [OK]"}));
    journal.client->act(UpdateAction::Skip);
    EXPECT_EQ(journal.take(), Lines{"close"});
    EXPECT_EQ(journal.skipped, "") << "what was pressed too late skips nothing";
}

TEST_F(UpdateDialogTest, ADownloadCanBeCancelledAndCanFail) {
    for (const bool cancelled : {true, false}) {
        dialog.asked();
        dialog.found({"7", "0.2.0", "", 10});
        journal.client->act(UpdateAction::Install);
        journal.take();
        if (cancelled) {
            journal.client->act(UpdateAction::Cancel);
            dialog.received(5);
            dialog.packageOpened(true);
            EXPECT_EQ(journal.take(), (Lines{"stop", "close"}));
        } else {
            dialog.failed(UpdateFailure::Signature);
            EXPECT_EQ(journal.take(), (Lines{"page The update did not work | The update is not signed by the "
                                             "makers of Kelpa, so it is not used. [OK]"}));
        }
    }
}

TEST_F(UpdateDialogTest, EveryFailureHasItsOwnWords) {
    std::vector<std::string> told;
    for (int failure = 0; failure <= static_cast<int>(UpdateFailure::Helper); ++failure) {
        dialog.asked();
        dialog.failed(static_cast<UpdateFailure>(failure));
        const std::string page = journal.take().back();
        EXPECT_EQ(std::count(told.begin(), told.end(), page), 0) << page;
        told.push_back(page);
    }
}

TEST(UpdateSupportTest, WithoutAFeedNothingIsEverFetchedAndTheMenuSaysWhy) {
    for (const auto support : {UpdateSupport::NoFeed, UpdateSupport::Store}) {
        Journal journal;
        UpdateDialog dialog(support, "0.1.0", journal, journal);
        dialog.due();
        EXPECT_EQ(journal.take(), Lines{});
        const std::string why =
            support == UpdateSupport::Store
                ? "The software store that Kelpa came from also brings its new versions."
                : "This copy of Kelpa does not look for updates. Get new versions where you got this one.";
        const Lines told{"page Kelpa does not update itself here | " + why + " [OK]", "present"};
        dialog.asked();
        EXPECT_EQ(journal.take(), told);
        dialog.asked();
        EXPECT_EQ(journal.take(), told);
        journal.client->act(UpdateAction::Close);
        EXPECT_EQ(journal.take(), Lines{"close"});
    }
}
