#pragma once

#include "NodeTarget.h"
#include "ObjectTreeNode.h"

#include <QAbstractItemModel>

#include <functional>

class clsElement;
class clsKorviInterface;

// The skin document as a tree of nodes, each with a node key (see NodeKey) and a
// text. Top-level nodes: "HEADERS" (when there are header variables) with one
// node per variable, the templates of the edited file ("T"), then every block of
// Layers ("L", or "S" for a state). Under an element node: first its properties
// ("P" + key), then its child elements ("E", or "U" for a USELAYER), in document
// order. Texts are read from the document whenever they are shown.
class ObjectTreeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Role {
        NodeKeyRole = Qt::UserRole + 1, // QByteArray
        NodeKindRole,                   // ObjectTreeNode::Kind
    };

    explicit ObjectTreeModel(clsKorviInterface &document, QObject *parent = nullptr);
    ~ObjectTreeModel() override;

    // Forgets every node and makes the top-level nodes from the document. With
    // `layersOnly` only the LAYER and STATE blocks are shown.
    void BuildObjectTree(bool layersOnly);
    // Forgets every node.
    void clear();

    // Appends a node for `element` under `parent` (the top level for an invalid
    // index); `prefix` is the key of the parent node joined with the element's
    // letter, e.g. "Lui_Main|E". The element's properties and children get their
    // nodes when the new node is unfolded.
    QModelIndex AddElementNode(clsElement *element, const QModelIndex &parent,
                               const QByteArray &prefix);
    // Appends a node for the property with key `propertyKey` under the element
    // node `owner`.
    QModelIndex AddPropertyNode(const QModelIndex &owner, const QByteArray &propertyKey);
    // Puts a node back at `row` among the children of `parent` (the top level for
    // an invalid index): an element node with its segment letter, or a property
    // node. Used to undo a removal, so the tree reads as before it.
    QModelIndex InsertElementNode(clsElement *element, const QModelIndex &parent, int row, char letter);
    QModelIndex InsertPropertyNode(const QModelIndex &owner, int row, const QByteArray &propertyKey);
    // Takes a node and everything under it out of the tree (the document is not
    // touched).
    void RemoveNode(const QModelIndex &index);
    // The node's text was changed in the document: views show it again.
    void RefreshNodeText(const QModelIndex &index);

    // What a key names, read from the document alone.
    NodeTarget ResolveNodeKey(const QByteArray &key) const;
    // What a node names: its key resolved, header variables through "HEADERS".
    NodeTarget resolve(const QModelIndex &index) const;

    QByteArray nodeKey(const QModelIndex &index) const;
    QString nodeText(const QModelIndex &index) const;
    ObjectTreeNode::Kind nodeKind(const QModelIndex &index) const;
    // The node with this key (header variables included); invalid when there is
    // none. Nodes on the way are made as needed.
    QModelIndex indexOfKey(const QByteArray &key) const;
    // The node whose element is `element` among the children of `parent`.
    QModelIndex indexOfElement(const clsElement *element, const QModelIndex &parent) const;

    clsKorviInterface &document() const { return mDocument; }

    QModelIndex index(int row, int column, const QModelIndex &parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    bool hasChildren(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

private:
    ObjectTreeNode *nodeOf(const QModelIndex &index) const;
    QModelIndex indexOfNode(const ObjectTreeNode *node) const;
    void makeChildren(ObjectTreeNode *node) const;
    void makeChildrenWithout(ObjectTreeNode *node,
                             const std::function<bool(const ObjectTreeNode &)> &isNew) const;
    static std::unique_ptr<ObjectTreeNode> elementNode(ObjectTreeNode *parent, clsElement *element,
                                                       char letter);
    static std::unique_ptr<ObjectTreeNode> propertyNode(ObjectTreeNode *parent,
                                                        const QByteArray &key);
    static QByteArray keyOf(const ObjectTreeNode *node);
    QModelIndex childWithSegment(const QModelIndex &parent, QByteArrayView segment) const;

    clsKorviInterface &mDocument;
    std::unique_ptr<ObjectTreeNode> mRoot;
};
