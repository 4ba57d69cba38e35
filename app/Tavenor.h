// SPDX-FileCopyrightText: The Tavenor developers
// SPDX-License-Identifier: MIT
// The main window: an index of its pages, slots and operations.
#pragma once

#include "exchange/tscfile.h"
#include "exchange/xmffile.h"
#include "model/columns.h"
#include "model/filters.h"
#include "storage/DataBase.h"

#include <QElapsedTimer>
#include <QIcon>
#include <QMainWindow>
#include <QMap>
#include <QMessageBox>
#include <QPair>
#include <QPointer>
#include <QStringList>
#include <QVector>

#include <functional>
#include <memory>

class AboutForm;
struct DroppedFiles;
class ListButtonForm;
struct RecordListContent;
class calcForm;
class chooseNameForm;
class inputDataForm;
class newTableElement;
class outputDataForm;
class progressBarForm;
class QMenu;

namespace Ui
{
class Tavenor;
}

/// The program's one window over one database file at a time. Each page's code stands in a
/// file of its own, in the order of the headings below:
///
///   start and life of a database   Tavenor.cpp, tavenor_texts.cpp, tavenor_database.cpp
///   commands and modes             tavenor_commands.cpp, tavenor_maintenance.cpp
///   keyboard, context menus, drops tavenor_keyboard.cpp, tavenor_menus.cpp, tavenor_drops.cpp
///   table list                     tavenor_tables.cpp
///   record list                    tavenor_recordlist.cpp
///   record view                    tavenor_recordview.cpp
///   record entry                   tavenor_recordentry.cpp
///   records                        tavenor_records.cpp
///   table designer                 tavenor_designer.cpp
///   sub-tables                     tavenor_subtables.cpp
///   links                          tavenor_links.cpp
///   filters                        tavenor_filters.cpp
///   calculator                     tavenor_calculator.cpp
///   removal of tables              tavenor_removal.cpp
///   Export Manager Files           tavenor_xmf.cpp
///   structure files                tavenor_tsc.cpp
///   readable text                  tavenor_readable.cpp
///   shared dialogs                 tavenor_dialogs.cpp
///
/// A page's file is the only one that touches the widgets of its page.
class Tavenor : public QMainWindow
{
    Q_OBJECT

public:
    /// Builds the window, opens the remembered database and takes the lock; runs read-only
    /// when another copy holds it.
    explicit Tavenor(QWidget *parent = nullptr);
    /// Releases the lock unless read-only, and closes the database.
    ~Tavenor() override;

public slots:
    // Start and life of a database
    void newDb();
    void openDb();
    void hideShowList(bool on);
    void showDbPath(bool on);

    // Commands and modes
    void administratorModeEnabled(bool on);
    void enableTechMod();
    void clearTable();
    void clearAllTables();
    void removeTable();
    void deleteAll();

    // Table list
    void changeTable(QString table);
    void showHiddenTable();
    void changeTableIcon();

    // Record list
    void userSearch(QString userName);
    void userSearchNext();
    void userSearchPrev();
    void sort(bool on);
    void userSelectionChange();
    void changeToUsersPage();

    // Record view
    void vwRecord(int id);
    void nextRecord();
    void prevRecord();

    // Record entry
    void changeToNewUserPage();
    void updateUser();
    void newRecord();
    void deleteUser();

    // Table designer
    void newTable();
    void addField();
    void addNewTableElement();
    void changeElementSelectedTable(newTableElement *nTe, QString table);
    void addTableIcon();
    void acceptedNewTable();
    void cancelNewTable();

    // Sub-tables
    void goToSubTableRequest(QString listName);

    // Links
    void goToRequest(QString listName, int Id);
    void callFilter(QString listName, int Id);
    void linkToFilter(int Id, QString callListName, QString recordTitle);
    void goBack();

    // Filters
    void changeToFilterPage();
    void enableFilters();
    void createNewFilter();
    void disableFilters();
    void cancelFilterOperation();
    void switchToFilters(bool on);
    void deleteFilter();
    void waitForName();
    void removeSavedFilter(QString filterName);
    void changeTableAndFilter(QString table, QString filterName);

    // Calculator
    void changeToCalcPage();
    void calcResult();

    // Export Manager Files
    void exportToFile();
    void exportSingleToFile();
    void exportingSingleToFile(QString fileName, QString tableName, int Id);
    void autoExportAll();
    void importFromFile();

    // Structure files
    void exportSelectedStructure();
    void autoExportAllStructures();
    void importTableStructure();
    void waitingForTableStructureName();

    // Readable text
    void exportSingleToFileTxt();
    void exportToFileHumanReading();
    void exportingSingleToFileHumanReading(QString fileName, QString selectedTable, int Id);

    // Shared dialogs
    void about();

protected:
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    /// Pages of the stacked widget, by their place.
    enum Page { DesignerPage, CalculatorPage, RecordsPage, EntryPage, FiltersPage };

    /// Shows the progress dialog for the length of an operation.
    class Progress;
    /// The title of the progress dialog, and what is being done.
    struct ProgressTexts {
        QString title;
        QString text;
    };

    // Start and life of a database
    void setTexts();
    void setLook();
    void fitSmallScreens();
    void connectDatabase();
    /// Opens `path` and makes its folders; false, with everything left as it was, when it
    /// cannot be opened. The empty path opens nothing.
    bool prepareDataFolders(const QString &path);
    /// True for the file of the open database and those that SQLite keeps beside it. They are
    /// left to SQLite alone: whoever else closes them drops its locks.
    bool isOpenDatabase(const QString &fileName) const;
    /// Leaves every page and shows nothing: what is open is another database, or no table.
    void emptyPages();
    /// Brings up what is open: lock (unless skipLock), table list, reserved tables, first
    /// table, saved filters.
    void setDatabase(bool skipLock);
    void setReadOnly(bool on);
    void switchDatabase(const QString &path);
    void showFirstTable();
    void createReservedTables();
    void createSettingsTable();
    void createFiltersTable();
    void createSubTablesConfigsTable();
    void createIfMissing(const QString &name, const ColumnDefinitions &columns);
    /// Creates the table unless its name is taken, which is reported.
    bool createTableChecked(const QString &name, const ColumnDefinitions &columns);
    void warnNameTaken(const QString &name);

    // Commands and modes
    void setActionTexts();
    void connectActions();
    void makeSecondDoor();
    void makeModeMarks();
    void updateCommands();
    void updateSecondDoor();
    void connectMaintenance();

    // Keyboard, context menus, drops
    void connectKeyboard();
    void connectTableKeys();
    bool searchKey(const QKeyEvent *event);
    void focusSearch();
    /// Opens the record of the current line for changes.
    void editListed();
    /// Reads the current table again and shows the record that was shown.
    void reload();
    void openMenuBar();
    /// Opens the menu of what has the focus, as the Menu key does, which many keyboards lack.
    void askForMenu();
    /// Gives the focus to the next area of the window that can take it, or the previous one.
    void changeArea(int step);
    QList<QWidget *> areas() const;
    QWidget *targetIn(QWidget *area) const;
    /// The focus goes to the record list; to the record, while the list is hidden.
    void focusRecords();
    /// The focus goes to the page shown, where it was there last.
    void focusPage();
    /// The focus goes to the entry of the panel that is in force.
    void focusPanel();
    QWidget *panelTarget() const;
    /// Keeps in mind where the focus is when a page is opened over the records.
    void rememberFocus();
    /// The focus goes back there.
    void restoreFocus();
    void connectMenus();
    void showTableMenu(const QPoint &place);
    void fillTableMenu(QMenu &menu, const QString &table);
    void fillFilterMenu(QMenu &menu, const ListButtonForm &button);
    /// Adds a command that works on the current table; `table` becomes that first.
    void addForTable(QMenu &menu, QAction *command, const QString &table);
    void showListMenu(int row, const QPoint &place);
    void showRecordMenu(const QPoint &place);
    void execRecordMenu(const QPoint &place, bool isRecord);
    bool mayTake(const DroppedFiles &dropped) const;
    void takeFiles(const DroppedFiles &dropped);
    /// Removes these tables and makes the program's own ones anew; `left` gets those that could
    /// not be removed. False when none could be.
    bool removeTables(const QStringList &names, QStringList *left);

    // Table list
    void setTableTexts();
    void fillTableList();
    void rebuildTableList();
    void addTableButton(const QString &table, const QIcon &icon);
    /// Takes a table that was just made into the list of all, and gives it a button if `listed`.
    void addToTableList(const QString &table, bool listed);
    /// The row of "settings" that gives a new table its icon.
    FieldPairs settingsRow(const QString &table, const QString &iconPath) const;
    /// True when there is a current table; says that there is none otherwise.
    bool hasCurrentTable();
    /// True while a database is open; says that there is no table otherwise.
    bool hasDatabase();
    /// Asks for a picture and copies it to the icons; its path there, relative to the database's
    /// folder.
    QString chooseTableIcon();
    /// The first table that is neither reserved nor hidden; empty when there is none.
    QString firstOrdinaryTable() const;
    /// The name at this place of the table list, empty beyond its end. Where it is a reserved
    /// one, which only the advanced mode shows, the first ordinary table instead.
    QString tableAt(int place) const;
    void markCurrentTable();
    /// The table's icon: the file recorded in "settings", empty when that cannot be shown,
    /// the built-in one when none is recorded.
    QIcon tableIcon(const QString &table) const;
    void showTableHead(const QString &table);
    /// Makes `table` the current one and fills the record list; the record view is left to the
    /// caller.
    void listTable(const QString &table);
    /// Shows the buttons again that depend on the records of `table`, one of the program's own.
    void showChangedButtons(const QString &table);
    /// Shows again what depends on the records of `table`, many of which have changed.
    void showChanged(const QString &table);

    // Record list
    void setRecordListTexts();
    void connectRecordList();
    void loadUserList(const QString &table);
    /// True for a table that exists, or cannot be looked up now.
    bool mayBeThere(const QString &table) const;
    RecordListContent readRecordList(const QString &table);
    void warnUnreadable(const QString &table, const QString &reason);
    void clearRecordList();
    /// Says in an empty list why it is empty and what to do next.
    void explainEmptyList(bool tableWasRead);
    /// The commands that lead to a record in the empty list: `filtered`, or of an empty table.
    QStringList waysToARecord(bool filtered) const;
    /// The commands that lead to a first table, for one who has none.
    QStringList waysToATable() const;
    /// The row of the line that opens record `id`; -1 when it has no line.
    int rowOfRecord(int id) const;
    /// The Id that the line at `row` opens; 0 for a line that opens none.
    int recordOfRow(int row) const;
    /// True when the line at `row` reads as that of the record shown.
    bool isLineOfShown(int row) const;
    /// Shows the record of the selected line, where another one is shown: what is done to the
    /// line must not be done to that one.
    void showHighlighted();
    void selectRow(int row);
    /// Makes `table` the current one and shows its record `id`.
    void showRecordOf(const QString &table, int id);
    /// Selects the first line and shows its record, or nothing when the list is empty.
    void showFirstRecord();
    void showSearchResult(int index);
    /// Notes the lines that contain `text`, and says so when there is none.
    void findLines(const QString &text);
    /// Searches the list again that was read again, and leaves the selection where it is.
    void searchAgain();

    // Record view
    void setRecordViewTexts();
    void connectRecordView();
    /// The first table that could not be read while a page was built, and why; without a reason,
    /// all could. What is known to fail is not tried again: each try waits for the lock of
    /// another program.
    struct UnreadTable {
        QString table;
        QString reason;
    };
    void buildRecordView(int id, const QString &table);
    void clearRecordView();
    void orderRecordView();
    /// Shows the record `currentId` again, or nothing when the list is empty.
    void showCurrentRecord();
    /// The field of the record that is shown for this column; null for one that is not shown.
    outputDataForm *makeField(const QString &column, const QVariant &value);
    outputDataForm *makeReference(const QString &column, const QVariant &stored,
                                  UnreadTable *unread);
    outputDataForm *makeLink(const QString &column, const QVariant &value, UnreadTable *unread);
    QVariant linkValueOf(int id, const QString &column, const QVariant &stored,
                         UnreadTable *unread);
    /// Puts the fields that were made on the page.
    void showFields();

    // Record entry
    void setRecordEntryTexts();
    void connectRecordEntry();
    /// Builds the page; false, after the reason was shown, when the table cannot be read.
    bool buildInputPage(int id);
    void clearInputPage();
    void showEntryPage();
    inputDataForm *makeEditor(const QString &column, const QVariant &value, UnreadTable *unread);
    void fillEditor(inputDataForm *editor, const QVariant &value, UnreadTable *unread);
    /// What can be chosen for a reference or a link; `unread` tells when that cannot be read.
    QVector<QPair<int, QString>> referenceChoices(const QString &column, UnreadTable *unread) const;
    QStringList linkChoices(const QString &column, UnreadTable *unread) const;
    void placeEditor(inputDataForm *editor);
    /// The folder that attachments of the record on the page go to; settled when first asked
    /// for, and then kept for the page.
    QString entryFolder();
    bool refuseEmptyField(const FieldPairs &pairs);
    bool saveChanges(const FieldPairs &pairs);
    void setTyped(bool on);
    /// Makes values of what is half typed in the editor that has the focus.
    void finishTyping();
    bool mayDiscardTyped();
    void cancelEntry();
    void escapeEntry();

    // Records
    /// Adds a complete record; its Id, or -1 after the failure was shown.
    int addRecord(const QString &table, const FieldPairs &fields, bool keepId);
    bool mayBeAdded(const QString &table, const FieldPairs &fields, bool keepId);
    /// True when the table has a record of this Id, or title; `error` as in DataBase.
    bool recordExists(const QString &table, const FieldPairs &fields, bool keepId,
                      QString *error = nullptr) const;
    QString userPathFor(const QString &table, const FieldPair &title, QString *error) const;
    /// Writes fields of a record of the current table; the first pair, its Id, in the
    /// advanced mode only. False when any write failed, which was shown.
    bool updateRecordFields(int id, const FieldPairs &pairs);

    // Table designer
    void setDesignerTexts();
    void connectDesigner();
    void showDesigner();
    /// Shows the current table's icon and name above the pages; while a new table is designed,
    /// the page's heading instead.
    void updateTableHead();
    /// True while the designer shows something that would be lost with its page.
    bool isDesigned() const;
    /// True when the designer may be left: nothing would be lost, or the user agrees.
    bool mayDropDesign();
    void escapeDesigner();
    void putHeadBeforeRows();
    /// Adds a row that asks for one more column, the sub-tables of sub-tables left out.
    newTableElement *appendFieldRow();
    newTableElement *appendDesignerRow();
    void clearDesignerRows();
    /// The stored names of the tables that a new column can lead to.
    QStringList linkTargets() const;
    /// The stored name of the table that is being designed; empty when none was typed.
    QString designedTable() const;
    /// True, after the reason was shown, when the typed name cannot be used.
    bool refuseTableName(const QString &table);
    /// True, after the reason was shown, when one of the rows cannot become a column of `table`.
    bool refuseRows(const QString &table, bool exists);
    void addDesignedFields(const QString &table);
    bool createDesignedTable(const QString &table);
    /// Adds a column; when the table is a sub-table, later ones of the same field get it too.
    void addFieldToTable(const QString &table, const QString &column, const QString &type);

    // Sub-tables
    /// The table that SQLite takes for this name: one that exists may differ in letter case.
    QString existingTable(const QString &name, QString *error = nullptr) const;
    /// Writes down which columns the sub-tables of one field get.
    void createSubTableConfig(const QString &table, const QString &column,
                              const ColumnDefinitions &columns);
    /// Writes down one of these columns, unless it is none.
    void addSubConfigRow(const QString &name, const ColumnDefinition &column);
    ColumnDefinitions subConfigColumns(const QString &base, QString *error) const;
    void createSubTable(const QString &fieldColumn, const QString &subName, const QString &parent);

    // Links
    void connectLinks();
    /// From now on "Indietro" leads to the record that is shown.
    void rememberWayBack();
    void enterTable(const QString &listName);
    /// The table that a press of "Trova" means: the one of this name, or the one that the field
    /// of the record shown with this value leads to; empty when there is none.
    QString linkedTable(const QString &nameOrValue, QString *error) const;
    /// Hides the way back when its table is gone.
    void checkWayBack();

    // Filters
    void setFilterTexts();
    void connectFilters();
    void rebuildFilterButtons();
    void addFilterButton(const QString &table, const QString &filterName, const QIcon &icon);
    void setActiveFilterName(const QString &filterName);
    void showLed(bool on);
    /// Says in the empty panel of saved filters how to make one.
    void explainEmptyFilters();
    /// Marks the condition in force that no other precedes: its joining word does not count.
    void markFirstCondition();
    /// Drops all conditions and their page, also those of a database that was open before.
    void forgetFilters();
    void buildFilterPage(const QStringList &columns);
    inputDataForm *makeCondition(const QString &column);
    /// Builds the page, with the conditions last switched on, when it is not there yet or not
    /// that of the current table's columns.
    /// False, after the reason was shown, when the table cannot be read.
    bool refreshFilterPage();
    /// Reads the choices of links and references; done when the page is first shown, because
    /// most tables are left before. Those that cannot be read are tried again with the next
    /// showing.
    void fillFilterChoices();
    /// Shows the Id's condition in the advanced mode, hides it otherwise.
    void showSystemConditions();
    /// Builds the page anew with these conditions, which then are those last switched on.
    void restoreConditions(const QVector<Filters::Setting> &settings);
    /// The same on the page that is there.
    void setConditions(const QVector<Filters::Setting> &settings);
    /// Puts the page into the state in which a person meets it.
    void prepareFilterPage();
    /// Says once of each condition whose number cannot be read that it counts as 0.
    void reportUnreadableNumbers();
    QVector<Filters::Setting> filterSettings() const;
    /// Those of filterSettings() that take part.
    QVector<Filters::Setting> conditionsInForce() const;
    /// The conditions, ready for a walk over a table with these columns.
    Filters::Predicate filterPredicate(const QStringList &columns) const;
    /// Whether the record passes the conditions. One that cannot be read now does: it is stepped
    /// to, and its page tells why.
    bool passesFilter(const QString &table, int id) const;
    /// Sets the conditions of a saved filter; false, after the reason was shown, when they cannot
    /// be read.
    bool readSavedFilter(const QString &filterName);
    bool saveConditions(const QString &filterName);
    /// Removes a saved filter after asking; what it shows goes too while it is in force. The name
    /// is a copy: that of the filter in force is emptied on the way.
    void deleteSavedFilter(QString filterName);

    // Calculator
    void setCalculatorTexts();
    void setCalculatorLook();
    void connectCalculator();
    void addCalcForm(const QString &column);
    void clearCalculator();
    void clearResults();
    void alignCalculator();
    void showCalculator();
    void leaveCalculator();

    // Removal of tables
    /// A fresh reading of the database's tables; what is known of them when it cannot be read.
    QStringList tablesNow() const;
    /// Removes `currentTable` with everything that belongs to it, and shows another one. As one
    /// of a `batch` the table alone: the caller empties the rest. False when the table is still
    /// there, which was shown.
    bool removeCurrentTable(bool batch);
    bool dropWithItsRows(const QString &table);
    /// The bases of the sub-table configurations that go with the table.
    QStringList configurationsOf(const QString &table, QString *error) const;
    /// Takes a table that is gone out of the list of all, and its button away.
    void removeFromTableList(const QString &table);
    void showTableAfterRemoval();
    /// There is no table to show: no record, no filter, "----" for names.
    void showNoTable();

    // Export Manager Files
    void connectXmf();
    /// Writes a file whole, with the progress dialog shown meanwhile; shows `failure` when it
    /// cannot be written, or `write` gives false.
    void writeFile(const QString &fileName, const ProgressTexts &texts, const QString &failure,
                   const std::function<bool(QTextStream &)> &write);
    /// writeFile() with the messages of exports of records.
    void writeRecords(const QString &fileName, const ProgressTexts &texts,
                      const std::function<bool(QTextStream &)> &write);
    void exportTable(const QString &fileName, const QString &tableName);
    void importFiles(const QStringList &fileNames);
    void importFile(const QString &fileName);
    /// Adds the records of a file up to the first that does not fit the table; false when
    /// there is one.
    bool importRecords(XmfFile::Reader &reader, qint64 total);
    /// False for what cannot be read as a file, or must not be.
    bool canBeImported(const QString &fileName) const;

    // Structure files
    void connectTsc();
    void exportStructure(const QString &tableName, const QStringList &columnNames);
    /// Asks for the table's name when it is one file; several files name theirs.
    void importStructures(const QStringList &fileNames);
    void importStructure(const QString &fileName, const QString &tableName);
    /// Makes the table and records its icon; false, with a message, when it cannot be made.
    bool makeTable(const QString &name, const TscFile::Structure &structure);

    // Readable text
    void connectReadable();
    QString askReadableFile();

    // Shared dialogs
    void makeDialogs();
    void warn(const QString &text);
    void inform(const QString &text);
    bool confirm(const QString &text);
    /// Shows the name prompt with a suggestion; `continuation` runs once, when the name is
    /// accepted. A continuation that still waited is dropped.
    void askName(const QString &suggestion, void (Tavenor::*continuation)());
    /// Sets the texts of the progress dialog, and its bar to 0.
    void prepareProgress(const QString &title, const QString &text);
    void updateProgress(int done, int total);
    /// Paints what has changed, the progress that was reached included, when it is time to.
    void keepPainting();
    /// The same for numbers of values, which may be more than an int can count.
    void updateValueProgress(qint64 done, qint64 total);

    const std::unique_ptr<Ui::Tavenor> ui;

    // Start and life of a database
    std::unique_ptr<DataBase> db;
    QString docFolderName;
    QString dataFolderName;
    QString docFolder;
    QString dataFolder;
    QString databaseFolder;
    QString databaseFile;
    bool readOnly = false;
    /// Set before the first database is opened; readOnly follows when the lock is decided.
    bool opensReadOnly = false;

    // Commands and modes
    bool administratorMode = false;
    bool advancedMode = false;
    QList<QAction *> secondDoor;
    QAction *techModDoor = nullptr;
    QAction *showListAction = nullptr;
    QWidget *readOnlyMark = nullptr;
    QWidget *administratorMark = nullptr;
    QWidget *advancedMark = nullptr;

    // Keyboard
    QPointer<QWidget> leftFocus;

    // Table list
    QStringList allTables;
    QString currentTable;
    bool showHidden = false;
    QList<ListButtonForm *> listButtons;

    // Record list
    QMap<QString, int> listIdMap;
    QStringList listLines;
    QVector<int> lineIds;
    /// The list could not be read, or not to its end.
    bool listIsUnread = false;
    /// The record that would have been shown then; 0 for none.
    int unreadId = 0;
    QVector<int> searchResults;
    int searchIndex = 0;

    // Record view
    int currentId = 0;
    int currentRow = 0;
    QList<outputDataForm *> viewWidgets;

    // Record entry
    bool editing = false;
    /// Values were typed on the entry page and not saved yet.
    bool typed = false;
    QString attachmentFolder;
    bool folderIsNew = false;
    QList<inputDataForm *> inputWidgets;

    // Records
    bool reportInsertErrors = true;

    // Table designer
    QList<newTableElement *> designerRows;
    /// What the rows offer to link to, since the page was opened.
    QStringList designerTargets;
    /// The page adds fields to the current table, instead of making one.
    bool addingFields = false;

    // Links
    QString previousTable;
    int previousId = 0;
    /// Value and target of each LINK field of the record shown, in the order of the columns.
    QVector<QPair<QString, QString>> linkFields;

    // Filters
    QList<inputDataForm *> filterWidgets;
    /// The conditions as they were last switched on, for whoever changes them and cancels.
    QVector<Filters::Setting> activeFilters;
    /// The conditions that the record list was last read with.
    QVector<Filters::Setting> listedConditions;
    QString activeFilterName;
    QList<ListButtonForm *> filterButtons;
    /// The database that filterButtons were read from.
    QString filterButtonsFile;
    bool hasFilterChoices = false;

    // Calculator
    QList<calcForm *> calcWidgets;

    // Structure files
    QString structureFile;

    // Shared dialogs
    QMessageBox *messageBox = nullptr;
    std::unique_ptr<progressBarForm> progressForm;
    std::unique_ptr<chooseNameForm> nameForm;
    AboutForm *aboutForm = nullptr;
    bool operationRunning = false;
    int reached = 0;
    int toReach = 0;
    QElapsedTimer sincePaint;
    QElapsedTimer sinceStart;
};
