#pragma once

#include "app/components/row_list_model.h"
#include "app/search/word_card.h"

#include <QPointer>
#include <QQmlEngine>
#include <QString>

#include <memory>

namespace lexiquill {

class Cancellation;
class DictionaryShelf;

/// One dictionary that knows the word.
struct DictionaryAnswerRow {
    QString path; ///< of its main file
    QString name;
    QString summary; ///< in one line
    QString article; ///< rich text; empty until it is opened
    bool isOpen = false;

    bool operator==(const DictionaryAnswerRow &) const = default;
};

/// What the offline dictionaries say about a word, for the definition card. They are asked when that is
/// opened, and their articles are read one by one, all in the background.
class OtherDictionaries : public RowListModel<DictionaryAnswerRow, &DictionaryAnswerRow::path> {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString word READ word WRITE setWord NOTIFY wordChanged)
    /// The card that shows the word. The dictionaries whose answer it shows already are left out.
    Q_PROPERTY(lexiquill::WordCard *card MEMBER m_card)
    /// Whether there is more than one dictionary.
    Q_PROPERTY(bool isOffered READ isOffered NOTIFY isOfferedChanged)
    Q_PROPERTY(bool isOpen READ isOpen WRITE setIsOpen NOTIFY isOpenChanged)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)

public:
    enum Role { NameRole = Qt::UserRole, SummaryRole, ArticleRole, IsOpenRole };

    explicit OtherDictionaries(QObject *parent = nullptr);
    ~OtherDictionaries() override;

    const QString &word() const { return m_word; }
    /// Closes the list.
    void setWord(const QString &word);
    bool isOffered() const { return m_isOffered; }
    bool isOpen() const { return m_isOpen; }
    void setIsOpen(bool isOpen);
    bool isLoading() const { return m_isLoading; }

    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Opens or closes the article of a row.
    Q_INVOKABLE void toggle(int row);

Q_SIGNALS:
    void wordChanged();
    void isOfferedChanged();
    void isOpenChanged();
    void isLoadingChanged();

private:
    void countDictionaries();
    void ask();
    void showArticle(const QString &path, const QString &article);
    void setIsLoading(bool isLoading);

    DictionaryShelf &m_shelf;
    QPointer<WordCard> m_card;
    QString m_word;
    bool m_isOffered = false;
    bool m_isOpen = false;
    bool m_isLoading = false;
    std::unique_ptr<Cancellation> m_question; ///< also marks the results of earlier words as outdated
};

} // namespace lexiquill
