#pragma once

#include <QtCore/QPersistentModelIndex>
#include <QtCore/QSortFilterProxyModel>

namespace host {

/// The lines of the host's log that contain a text, and the selected lines, for the QML files as `logView`.
/// The selection is a range of lines. It ends when one of its ends leaves the view. Application thread.
class LogView : public QSortFilterProxyModel
{
    Q_OBJECT
    Q_PROPERTY(QString filter READ filter WRITE setFilter NOTIFY filterChanged)
    Q_PROPERTY(int currentRow READ currentRow NOTIFY selectionChanged)

public:
    enum Role { SelectedRole = Qt::UserRole };

    /// @p log must outlive this.
    explicit LogView(QAbstractItemModel& log);

    QString filter() const { return filter_; }
    /// Shows the lines that contain @p text in any case; all lines if it is empty.
    void setFilter(const QString& text);

    /// The line that was selected last; -1 without a selection.
    int currentRow() const { return current_.isValid() ? current_.row() : -1; }
    /// Selects a line, or with @p extend the lines from the first selected one to it. A row below 0 selects
    /// the first line, a row beyond the last line the last one.
    Q_INVOKABLE void select(int row, bool extend);
    Q_INVOKABLE void selectAll();
    /// The selected lines, separated by line feeds.
    QString selectedText() const;
    /// Copies the selected lines to the clipboard. No effect without a selection.
    Q_INVOKABLE void copy() const;

    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void filterChanged();
    void selectionChanged();

private:
    bool isSelected(int row) const;
    void setSelection(int anchor, int current);

    QString filter_;
    QPersistentModelIndex anchor_;
    QPersistentModelIndex current_;
};

} // namespace host
