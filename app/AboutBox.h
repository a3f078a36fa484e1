#pragma once

class QWidget;

// "About Quorvane": the product's name, its web site, the maker and the version ("v1.20.2").
class AboutBox {
public:
    static void show(QWidget* parent);
};
