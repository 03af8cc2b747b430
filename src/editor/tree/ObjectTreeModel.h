// SPDX-License-Identifier: MIT
#pragma once

#include "NodeTarget.h"
#include "ObjectTreeNode.h"

#include <QAbstractItemModel>

#include <functional>

class SkinDocument;
class clsElement;
class clsKorviInterface;

// The skin document as a tree of nodes, each with a node key (see NodeKey) and a
// text. Top-level nodes: "HEADERS" (when there are header variables) with one
// node per variable, the templates of the edited file ("T"), then every block of
// Layers ("L", or "S" for a state). Under an element node: first its properties
// ("P" + key), then its child elements ("E", or "U" for a USELAYER), in document
// order. Texts are read from the document whenever they are shown.
//
// The model follows the document by itself: it listens to the SkinDocument's
// signals and adds, removes and redraws its nodes. A property or element added
// at the end gets its node at the end of its parent node; one put back in the
// middle goes before the node of the entry that follows it.
class ObjectTreeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Role {
        NodeKeyRole = Qt::UserRole + 1, // QByteArray
        NodeKindRole,                   // ObjectTreeNode::Kind
    };

    explicit ObjectTreeModel(SkinDocument &document, QObject *parent = nullptr);
    ~ObjectTreeModel() override;

    // Forgets every node and makes the top-level nodes from the document. With
    // `layersOnly` only the LAYER and STATE blocks are shown.
    void BuildObjectTree(bool layersOnly);
    // Forgets every node.
    void clear();

    // What a key names, read from the document alone.
    NodeTarget ResolveNodeKey(const QByteArray &key) const;
    // What a node names: its key resolved, header variables through "HEADERS".
    NodeTarget resolve(const QModelIndex &index) const;

    QByteArray nodeKey(const QModelIndex &index) const;
    QString nodeText(const QModelIndex &index) const;
    ObjectTreeNode::Kind nodeKind(const QModelIndex &index) const;
    // The letter of the node's own segment ('P' for a property, 'E' for
    // "Lui_Main|EtxtTitle"); 0 for the "HEADERS" node and the header
    // variables, which have none.
    char nodeLetter(const QModelIndex &index) const;
    // The node with this key (header variables included); invalid when there is
    // none. Keys compare as the document's collections do, ignoring ASCII case;
    // nodes on the way are made as needed.
    QModelIndex indexOfKey(const QByteArray &key) const;
    // The node whose element is `element` among the children of `parent`.
    QModelIndex indexOfElement(const clsElement *element, const QModelIndex &parent) const;

    QModelIndex index(int row, int column, const QModelIndex &parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    bool hasChildren(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;

private:
    void propertyChanged(const QByteArray &ownerKey, int index);
    void propertyAdded(const QByteArray &ownerKey, int index);
    void propertyAboutToBeRemoved(const QByteArray &ownerKey, int index);
    void elementInserted(const QByteArray &parentKey, int index);
    void elementAboutToBeRemoved(const QByteArray &parentKey, int index);

    ObjectTreeNode *nodeOf(const QModelIndex &index) const;
    QModelIndex indexOfNode(const ObjectTreeNode *node) const;
    // The node that shows the element named by `key` (the root for an empty
    // key), found through the element's own key: a used layer is changed
    // where the layer itself stands.
    ObjectTreeNode *nodeShowing(const QByteArray &key) const;
    ObjectTreeNode *nodeOfKey(const QByteArray &key) const;
    ObjectTreeNode *childWithSegment(ObjectTreeNode *node, QByteArrayView segment) const;
    int rowOfElement(const ObjectTreeNode *owner, const clsElement *element) const;
    void insertNode(ObjectTreeNode *owner, int row, std::unique_ptr<ObjectTreeNode> node);
    void removeNode(ObjectTreeNode *owner, int row);
    void makeChildren(ObjectTreeNode *node) const;
    void makeChildrenWithout(ObjectTreeNode *node,
                             const std::function<bool(const ObjectTreeNode &)> &isNew) const;
    static std::unique_ptr<ObjectTreeNode> elementNode(ObjectTreeNode *parent, clsElement *element,
                                                       char letter);
    static std::unique_ptr<ObjectTreeNode> propertyNode(ObjectTreeNode *parent,
                                                        const QByteArray &key);
    static QByteArray keyOf(const ObjectTreeNode *node);

    SkinDocument &mSkin;
    const clsKorviInterface &mDocument;
    std::unique_ptr<ObjectTreeNode> mRoot;
    bool mLayersOnly = false;
};
