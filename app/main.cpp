#include "app/MyApp.h"

int main(int argc, char **argv)
{
    return MyApp::Main(argc, argv);
}
