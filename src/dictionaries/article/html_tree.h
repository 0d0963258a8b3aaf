#pragma once

#include <QByteArray>
#include <QString>

#include <gumbo.h>

#include <memory>
#include <optional>

namespace lexiquill::article {

struct HtmlTreeDeleter {
    void operator()(GumboOutput *tree) const;
};
/// A parsed HTML document. It refers to the UTF-8 text it was made from.
class HtmlTree {
public:
    /// Reads a document. Its tree is missing if the document ends within a tag or a comment, or if its
    /// elements are nested so deeply that reading it would need much time or memory.
    explicit HtmlTree(const QString &text);

    /// The root element; null if the tree is missing.
    const GumboNode *root() const { return m_tree ? m_tree->root : nullptr; }

private:
    QByteArray m_text;
    std::unique_ptr<GumboOutput, HtmlTreeDeleter> m_tree;
};

/// Calls the visitor for each node in document order: `enter(node)`, which says whether to visit the
/// children, and `leave(node)` behind them if it did. Needs no stack.
template <typename Visitor> void visitHtml(const GumboNode *root, Visitor &visitor) {
    const GumboNode *node = root;
    while (node) {
        const bool isElement = node->type == GUMBO_NODE_ELEMENT || node->type == GUMBO_NODE_TEMPLATE;
        const bool inside = visitor.enter(*node) && isElement;
        if (inside && node->v.element.children.length > 0) {
            node = static_cast<const GumboNode *>(node->v.element.children.data[0]);
            continue;
        }
        if (inside)
            visitor.leave(*node);
        while (node != root) {
            const GumboNode *parent = node->parent;
            const size_t next = node->index_within_parent + 1;
            if (next < parent->v.element.children.length) {
                node = static_cast<const GumboNode *>(parent->v.element.children.data[next]);
                break;
            }
            visitor.leave(*parent);
            node = parent;
        }
        if (node == root)
            break;
    }
}

/// The text of a node that is text; no value for other nodes.
std::optional<QString> textOf(const GumboNode &node);

/// The name of an element in lower case; also of elements that HTML does not have.
QString elementName(const GumboNode &node);

/// The value of an attribute; empty if it is missing.
QString attributeOf(const GumboNode &node, const char *name);

} // namespace lexiquill::article
