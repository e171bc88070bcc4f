#pragma once

#include "persistence/RoutineSchedule.h"

#include <QAbstractListModel>
#include <QList>
#include <QUuid>
#include <QVariantList>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <optional>

namespace tarnwell {

class Routine;
class RoutineItem;
class RoutineRepository;
class StoreContext;

// A list model whose rows are snapshots with an `id`: a new snapshot list is
// reported as one inserted, removed or moved row where that is what happened,
// as changed rows where only values differ, and as a reset otherwise. (Not a
// class template itself, so that QML sees the models' real base types.)
class SnapshotListModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ANONYMOUS
public:
    using QAbstractListModel::QAbstractListModel;

protected:
    // Makes `rows`, the model's rows, `fresh`.
    template<typename Row>
    void replaceRows(QList<Row> &rows, const QList<Row> &fresh)
    {
        const QList<QUuid> before = idsOf(rows);
        const QList<QUuid> after = idsOf(fresh);
        if (before != after) {
            const int n = int(before.size());
            int i = 0;
            while (i < n && i < after.size() && before[i] == after[i])
                ++i;
            if (after.size() == n + 1 && before.mid(i) == after.mid(i + 1)) {
                beginInsertRows({}, i, i);
                rows.insert(i, fresh[i]);
                endInsertRows();
            } else if (after.size() == n - 1 && before.mid(i + 1) == after.mid(i)) {
                beginRemoveRows({}, i, i);
                rows.removeAt(i);
                endRemoveRows();
            } else if (after.size() == n && i + 1 < n && before[i] == after[i + 1] && before[i + 1] == after[i] &&
                       before.mid(i + 2) == after.mid(i + 2)) {
                beginMoveRows({}, i + 1, i + 1, {}, i);
                rows.move(i + 1, i);
                endMoveRows();
            } else {
                beginResetModel();
                rows = fresh;
                endResetModel();
                return;
            }
        }
        for (int row = 0; row < rows.size(); ++row) {
            if (!(rows[row] == fresh[row])) {
                rows[row] = fresh[row];
                Q_EMIT dataChanged(index(row), index(row));
            }
        }
    }

private:
    template<typename Row>
    static QList<QUuid> idsOf(const QList<Row> &rows)
    {
        QList<QUuid> ids;
        ids.reserve(rows.size());
        for (const Row &row : rows)
            ids << row.id;
        return ids;
    }
};

struct RoutineItemRow
{
    QUuid id;
    RoutineItem *item = nullptr;
    QString title;
    int minutes = -1; // -1: unplanned

    bool operator==(const RoutineItemRow &) const = default;
};

// The task templates of the routine chosen in the routines window, in their
// order. Every operation saves at once; a refused title comes back as the
// text to show in place ("" on success).
// (The base is named in full: QML finds it by that name.)
class RoutineItemsModel : public tarnwell::SnapshotListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(int count READ count NOTIFY countChanged)
public:
    enum Role { IdRole = Qt::UserRole + 1, TitleRole, MinutesRole };
    Q_ENUM(Role)

    RoutineItemsModel(RoutineRepository &repository, QObject *parent = nullptr);

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;
    int rowCount(const QModelIndex &parent = {}) const override { return parent.isValid() ? 0 : int(m_rows.size()); }
    int count() const { return rowCount(); }

    // `minutes` is empty or a duration ("45", "45m", "1h30").
    Q_INVOKABLE QString add(const QString &title, const QString &minutes);
    Q_INVOKABLE QString update(int row, const QString &title, const QString &minutes);
    Q_INVOKABLE void remove(int row);
    // -1 up, +1 down; false at either end.
    Q_INVOKABLE bool move(int row, int offset);

    void setRoutine(Routine *routine);
    Routine *routine() const { return m_routine; }
    void refresh();

Q_SIGNALS:
    void countChanged();

private:
    bool hasRow(int row) const { return row >= 0 && row < m_rows.size(); }
    void replaceRows(const QList<RoutineItemRow> &fresh) { SnapshotListModel::replaceRows(m_rows, fresh); }
    QList<RoutineItemRow> m_rows;
    RoutineRepository &m_repository;
    Routine *m_routine = nullptr;
};

struct RoutineRow
{
    QUuid id;
    Routine *routine = nullptr;
    QString name;
    qint16 mask = 0;
    int itemCount = 0;

    bool operator==(const RoutineRow &) const = default;
};

// The routines window: every routine in list order, the chosen one's name,
// repeat rule and task templates. Changes go through RoutineRepository and
// save at once; the window follows changes made elsewhere (the popover's
// "save queue") through the store's change notice.
// (The base is named in full: QML finds it by that name.)
class RoutinesModel : public tarnwell::SnapshotListModel
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the application")
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(int currentIndex READ currentIndex WRITE setCurrentIndex NOTIFY currentIndexChanged)
    Q_PROPERTY(tarnwell::RoutineItemsModel *items READ itemsObject CONSTANT)
    Q_PROPERTY(QString currentName READ currentName NOTIFY currentChanged)
    // The repeat menu's choice (RoutineSchedule::Kind as a number): "custom"
    // also while the user has the weekday toggles open on a named schedule.
    Q_PROPERTY(int repeatChoice READ repeatChoice NOTIFY currentChanged)
    // Seven {weekday (1 = Sunday ... 7 = Saturday), name, on}, starting on the
    // locale's first day of the week, with the locale's short day names.
    Q_PROPERTY(QVariantList weekdays READ weekdays NOTIFY currentChanged)
    // The repeat menu: {kind, text} in menu order.
    Q_PROPERTY(QVariantList repeatOptions READ repeatOptions NOTIFY textsChanged)
    Q_PROPERTY(QString repeatMenuText READ repeatMenuText NOTIFY textsChanged)
public:
    enum Role { IdRole = Qt::UserRole + 1, NameRole, RepeatKindRole, RepeatMaskRole, RepeatLabelRole, ItemCountRole };
    Q_ENUM(Role)

    RoutinesModel(RoutineRepository &repository, QObject *parent = nullptr);
    ~RoutinesModel() override;

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;
    int rowCount(const QModelIndex &parent = {}) const override { return parent.isValid() ? 0 : int(m_rows.size()); }

    int count() const { return rowCount(); }
    int currentIndex() const { return m_current; }
    void setCurrentIndex(int row);
    RoutineItemsModel &items() const { return *m_items; }
    RoutineItemsModel *itemsObject() const { return m_items; }
    Routine *currentRoutine() const;
    QString currentName() const;
    int repeatChoice() const;
    QVariantList weekdays() const;
    QVariantList repeatOptions() const;
    QString repeatMenuText() const;

    // A routine with the default name, after the others; it becomes the
    // current one. Returns its row.
    Q_INVOKABLE int create();
    // The trimmed name; "" or the text to show in place when refused.
    Q_INVOKABLE QString rename(int row, const QString &name);
    // The routine and its templates go; tasks made from them stay.
    Q_INVOKABLE void remove(int row);
    // For the current routine: never, every day and weekdays set their
    // schedule; custom opens the weekday toggles and keeps the schedule.
    Q_INVOKABLE void setRepeatChoice(int kind);
    Q_INVOKABLE void setWeekday(int weekday, bool on);

    // Re-reads the routines and the current one's templates.
    Q_INVOKABLE void refresh();
    void retranslate();

    // Weekday w (1 = Sunday ... 7 = Saturday) for a Qt day of the week, and
    // the seven weekdays in the locale's week order.
    static int weekdayOf(Qt::DayOfWeek day);
    static QList<int> weekOrder(Qt::DayOfWeek firstDay);

Q_SIGNALS:
    void countChanged();
    // Another routine is the current one.
    void currentIndexChanged();
    // Its name, schedule or repeat choice changed.
    void currentChanged();
    void textsChanged();

private:
    bool hasRow(int row) const { return row >= 0 && row < m_rows.size(); }
    void replaceRows(const QList<RoutineRow> &fresh) { SnapshotListModel::replaceRows(m_rows, fresh); }
    QList<RoutineRow> m_rows;
    Routine *routineAt(int row) const;
    void setMask(qint16 mask);
    void updateCurrent(const QUuid &id, bool forget);

    RoutineRepository &m_repository;
    RoutineItemsModel *m_items;
    struct Shown
    {
        int row = -1;
        QUuid id;
        QString name;
        qint16 mask = 0;
        bool custom = false;
        bool operator==(const Shown &) const = default;
    };
    void announce();

    int m_current = -1;
    QUuid m_currentId;
    bool m_customChosen = false;
    Shown m_shown;
    bool m_refreshing = false;
};

// Runs a store change: "" on success, else the text to show (a refused
// title) or the store's error (also logged).
QString attemptRoutineChange(const std::function<void()> &change);

} // namespace tarnwell
