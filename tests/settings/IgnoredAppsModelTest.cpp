#include "settings/IgnoredAppsModel.h"

#include "settings/support/QtPrinting.h"
#include "support/DesktopFixture.h"

#include <QStringList>
#include <memory>

namespace velmorand {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class IgnoredAppsModelTest : public DesktopFixture {
protected:
    IgnoredAppsModelTest() { follow(); }

    /// Notes what is told of the rows.
    void follow() {
        const auto note = [this](const QString& what) { told.append(what); };
        QObject::connect(model.get(), &QAbstractItemModel::rowsInserted,
                         [=](const auto&, int first, int) { note(QStringLiteral("inserted %1").arg(first)); });
        QObject::connect(model.get(), &QAbstractItemModel::rowsRemoved,
                         [=](const auto&, int first, int) { note(QStringLiteral("removed %1").arg(first)); });
        QObject::connect(model.get(), &QAbstractItemModel::dataChanged,
                         [=](const auto& first, const auto&) { note(QStringLiteral("changed %1").arg(first.row())); });
        QObject::connect(model.get(), &QAbstractItemModel::modelReset, [=] { note(QStringLiteral("reset")); });
        QObject::connect(model.get(), &IgnoredAppsModel::countChanged,
                         [=, this] { note(QStringLiteral("count %1").arg(model->count())); });
    }
    std::filesystem::path install(const std::string& identifier, const std::string& name,
                                  std::optional<ApplicationIcon> icon = {}) {
        const std::filesystem::path location = "/Applications/" + identifier;
        platform.workspace().applications().install(location, {identifier, name, std::move(icon)});
        return location;
    }
    void ignore(const std::vector<std::string>& identifiers) { preferencesStore->addIgnoredApps(identifiers); }
    [[nodiscard]] QStringList texts(int role) {
        QStringList found;
        for (int row = 0; row < model->rowCount(); ++row) found.append(model->index(row).data(role).toString());
        return found;
    }
    [[nodiscard]] QStringList identifiers() { return texts(IgnoredAppsModel::identifierRole); }
    [[nodiscard]] QStringList names() { return texts(IgnoredAppsModel::nameRole); }
    [[nodiscard]] SimulatedApplicationChooser& chooser() { return platform.applicationChooser(); }
    void settle() { platform.runLoop().runPending(); }

    std::unique_ptr<IgnoredAppsModel> model = std::make_unique<IgnoredAppsModel>(
        preferencesStore, platform.workspace(), platform.bundle(), platform.applicationChooser());
    QStringList told;
};

TEST_F(IgnoredAppsModelTest, IsEmptyAtFirst) {
    EXPECT_EQ(model->count(), 0);
    EXPECT_EQ(model->rowCount(), 0);
}

TEST_F(IgnoredAppsModelTest, ShowsWhatIsIgnoredWhenItIsMade) {
    install("b", "Editor", ApplicationIcon{ApplicationIcon::Source::theme, "editor"});
    ignore({"b", "a"});
    const IgnoredAppsModel late(preferencesStore, platform.workspace(), platform.bundle(), chooser());

    ASSERT_EQ(late.rowCount(), 2);
    EXPECT_EQ(late.index(0).data(IgnoredAppsModel::nameRole), "a");
    EXPECT_EQ(late.index(0).data(IgnoredAppsModel::iconRole), "");
    EXPECT_EQ(late.index(1).data(IgnoredAppsModel::nameRole), "Editor");
    EXPECT_NE(late.index(1).data(IgnoredAppsModel::iconRole), "");
    EXPECT_EQ(late.index(1).data(IgnoredAppsModel::identifierRole), "b");
}

TEST_F(IgnoredAppsModelTest, RolesHaveTheirNamesForViews) {
    EXPECT_EQ(model->roleNames().value(IgnoredAppsModel::identifierRole), "bundleIdentifier");
    EXPECT_EQ(model->roleNames().value(IgnoredAppsModel::nameRole), "name");
    EXPECT_EQ(model->roleNames().value(IgnoredAppsModel::iconRole), "icon");
}

TEST_F(IgnoredAppsModelTest, AnswersNothingForWhatIsNoRow) {
    ignore({"a"});

    EXPECT_FALSE(model->data(QModelIndex(), IgnoredAppsModel::nameRole).isValid());
    EXPECT_FALSE(model->index(0).data(Qt::EditRole).isValid());
    EXPECT_EQ(model->rowCount(model->index(0)), 0);
}

TEST_F(IgnoredAppsModelTest, InsertsEachNewRowAtItsPlace) {
    ignore({"m"});
    told.clear();

    ignore({"z", "a"});

    EXPECT_THAT(identifiers(), ElementsAre("a", "m", "z"));
    EXPECT_THAT(told, ElementsAre("inserted 0", "inserted 2", "count 3"));
}

TEST_F(IgnoredAppsModelTest, RemovesARow) {
    ignore({"a", "b", "B"});
    told.clear();

    model->remove(2);

    EXPECT_THAT(identifiers(), ElementsAre("B", "a"));
    EXPECT_THAT(preferencesStore->current().ignoredApps, ElementsAre("a", "B"));
    EXPECT_THAT(told, ElementsAre("removed 2", "count 2"));
}

TEST_F(IgnoredAppsModelTest, RemovesWhatAViewShowsLikeAnotherOne) {
    ignore({"\uFEFFapp.example.Mail", "app.example.Mail"});

    model->remove(1);

    EXPECT_THAT(preferencesStore->current().ignoredApps, ElementsAre("app.example.Mail"));
}

TEST_F(IgnoredAppsModelTest, RemovesWhatIsNotThereWithoutAnotherWord) {
    ignore({"a"});
    told.clear();

    model->remove(1);
    model->remove(-1);

    EXPECT_THAT(identifiers(), ElementsAre("a"));
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(IgnoredAppsModelTest, FollowsAnyOtherWayInWhichTheListChanges) {
    ignore({"a", "c", "d"});
    told.clear();

    changePreferences([](PreferencesState& state) { state.ignoredApps = {"d", "b"}; });

    EXPECT_THAT(identifiers(), ElementsAre("b", "d"));
    EXPECT_THAT(told, ElementsAre("removed 1", "removed 0", "inserted 0", "count 2"));
}

TEST_F(IgnoredAppsModelTest, StaysAsItIsWhenOtherPreferencesChange) {
    ignore({"a"});
    told.clear();
    install("a", "Editor");

    preferencesStore->setOuterPadding(8);

    EXPECT_THAT(names(), ElementsAre("a"));
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(IgnoredAppsModelTest, ShowsAnApplicationThatIsGoneByItsIdentifierOnceItLooksAgain) {
    const auto location = install("org.example.Editor", "Editor");
    ignore({"org.example.Editor"});
    ASSERT_THAT(names(), ElementsAre("Editor"));
    platform.workspace().applications().remove(location);
    told.clear();

    model->refresh();

    EXPECT_THAT(names(), ElementsAre("org.example.Editor"));
    EXPECT_THAT(told, ElementsAre("changed 0"));
    model->refresh();
    EXPECT_THAT(told, ElementsAre("changed 0"));
    model->remove(0);
    EXPECT_EQ(model->count(), 0);
}

TEST_F(IgnoredAppsModelTest, KeepsNamesOfAnyLengthAndDirection) {
    const std::string longName(5000, 'W');
    install("long", longName);
    install("right-to-left", "עורך טקסט");
    ignore({"long", "right-to-left"});

    EXPECT_THAT(names(), ElementsAre(QString::fromStdString(longName), QString::fromUtf8("עורך טקסט")));
}

TEST_F(IgnoredAppsModelTest, ShowsAndRemovesWhatCannotBeShownAsItIs) {
    ignore({"", "a\nb", "app.\u202Emoc"});
    install("a\nb", "Two\nLines");
    model->refresh();

    EXPECT_THAT(names(), ElementsAre("Unnamed app", "Two�Lines", "app.�moc"));
    EXPECT_THAT(identifiers(), ElementsAre("Blank identifier", "a�b", "app.�moc"));
    model->remove(2);
    model->remove(1);
    model->remove(0);
    EXPECT_THAT(preferencesStore->current().ignoredApps, IsEmpty());
}

TEST_F(IgnoredAppsModelTest, AsksWhichApplicationsToIgnore) {
    model->addApplications();

    EXPECT_THAT(chooser().requests(),
                ElementsAre(ApplicationChooserOptions{.message = "Choose applications for Velmorand to ignore",
                                                      .confirmText = "Ignore",
                                                      .startingFolder = "/Applications",
                                                      .allowsSeveral = true}));
}

TEST_F(IgnoredAppsModelTest, IgnoresWhatTheUserChooses) {
    const auto editor = install("org.example.Editor", "Editor");
    const auto viewer = install("org.example.Viewer", "Viewer");
    const auto own = install("app.velmorand.Velmorand", "Velmorand");
    model->addApplications();

    chooser().confirm({viewer, own, "/nowhere", editor});
    settle();

    EXPECT_THAT(preferencesStore->current().ignoredApps, ElementsAre("org.example.Viewer", "org.example.Editor"));
    EXPECT_THAT(names(), ElementsAre("Editor", "Viewer"));
}

TEST_F(IgnoredAppsModelTest, ChangesAndStoresNothingWhenTheUserCancels) {
    const std::size_t writes = platform.userDefaults().writes().size();
    model->addApplications();

    chooser().cancel();
    settle();

    EXPECT_EQ(model->count(), 0);
    EXPECT_EQ(platform.userDefaults().writes().size(), writes);
}

TEST_F(IgnoredAppsModelTest, MayBeGoneWhenTheUserHasChosen) {
    const auto editor = install("org.example.Editor", "Editor");
    model->addApplications();
    model.reset();

    chooser().confirm({editor});
    settle();

    EXPECT_THAT(preferencesStore->current().ignoredApps, IsEmpty());
}

}  // namespace
}  // namespace velmorand
