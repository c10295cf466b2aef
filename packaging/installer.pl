#!/usr/bin/perl
# Writes the description of an installer for wixl: the files of a staged folder, and the registry entries of the server in
# it, taken from the folder's own assembly manifest and IDL file. The entries are those that the server writes when it
# registers itself; scripts/check-packages.sh compares them.
#
# Nothing is drawn by lot: every identifier follows from what it stands for, so that one tree gives one installer.
#
# usage: installer.pl FOLDER >FILE.wxs
use strict;
use warnings;
use Digest::SHA qw(sha1);

my ($folder) = @ARGV or die "usage: $0 FOLDER\n";

sub read_text {
    open my $file, '<', "$folder/$_[0]" or die "$folder/$_[0]: $!\n";
    local $/;
    return scalar <$file>;
}

my $manifest = read_text('KivDateTime.manifest');
my $idl = read_text('KivDateTime.idl');

sub attributes { my %of = $_[0] =~ /(\w+)="([^"]*)"/g; return \%of }

my ($identity) = map { attributes($_) } $manifest =~ /<assemblyIdentity\b([^>]*)>/ or die "no identity\n";
my @classes = map { attributes($_) } $manifest =~ /<comClass\b([^>]*)>/g or die "no classes\n";
my ($library) = map { attributes($_) } $manifest =~ /<typelib\b([^>]*)>/ or die "no type library\n";
my ($library_name) = $idl =~ /version\(\S+?\), helpstring\("([^"]*)"\)\]\s*library/ or die "no name of the library\n";

my $wide = $identity->{processorArchitecture} eq 'amd64';
my $bits = $wide ? 64 : 32;
my ($version) = $identity->{version} =~ /^(\d+\.\d+\.\d+)\.\d+$/ or die "no version\n";
my $of_bitness = $wide ? 'yes' : 'no';

# An identifier that follows from a text (version 5 of RFC 4122, in a name space of this product's own).
sub guid {
    my @bytes = unpack 'C16', sha1(pack('H32', 'b13782f3ea8f48f3be91f6c6084b88f8') . $_[0]);
    $bytes[6] = $bytes[6] & 0x0f | 0x50;
    $bytes[8] = $bytes[8] & 0x3f | 0x80;
    return uc sprintf '%02x%02x%02x%02x-%02x%02x-%02x%02x-%02x%02x-' . '%02x' x 6, @bytes;
}

sub quoted {
    my ($text) = @_;
    my %entity = ('&' => '&amp;', '<' => '&lt;', '>' => '&gt;', '"' => '&quot;');
    $text =~ s/([&<>"])/$entity{$1}/g;
    return $text;
}

# --- registry ----------------------------------------------------------------------------------------------------------

my $server = '[#KivDateTime.ocx]';
my (@own, @shared);  # what belongs to this bitness; what the server of the other bitness has too

sub entry {
    my ($list, $key, $value, $name) = @_;
    my $named = defined $name ? sprintf(' Name="%s"', quoted($name)) : '';
    push @$list, sprintf '<RegistryValue Root="HKLM" Key="%s"%s Type="string" Value="%s"/>',
        quoted("Software\\Classes\\$key"), $named, quoted($value);
}

# A key with nothing in it, which goes with all that may have come to be below it.
sub bare_key { entry($_[0], $_[1], '', '*') }

my %status = (recomposeonresize => 1, cantlinkinside => 0x10, insideout => 0x80, activatewhenvisible => 0x100,
    nouiactivate => 0x4000, setclientsitefirst => 0x20000);

my ($automation_proxy, $dispatch_proxy) =
    ('{00020424-0000-0000-C000-000000000046}', '{00020420-0000-0000-C000-000000000046}');

# Control, persists to: storage, stream with initialisation, stream, property bag.
my @categories = qw(
    {40FC6ED4-2438-11CF-A3DB-080036F12502} {0DE86A52-2BAA-11CF-A229-00AA003D7352} {0DE86A53-2BAA-11CF-A229-00AA003D7352}
    {0DE86A54-2BAA-11CF-A229-00AA003D7352} {0DE86A57-2BAA-11CF-A229-00AA003D7352});

sub add_control {
    my ($class, $bitmap) = @_;
    my ($key, $name) = ("CLSID\\$class->{clsid}", $class->{progid});
    my $status = 0;
    $status |= $status{$_} // die "unknown status $_\n" for split /,/, $class->{miscStatusContent};
    entry(\@own, "$key\\ProgID", "$name.1");
    entry(\@own, "$key\\VersionIndependentProgID", $name);
    entry(\@own, "$key\\TypeLib", $class->{tlbid});
    entry(\@own, "$key\\Version", $library->{version});
    entry(\@own, "$key\\MiscStatus", '0');
    entry(\@own, "$key\\MiscStatus\\1", $status);
    entry(\@own, "$key\\Verb\\0", '&Edit,0,2');
    entry(\@own, "$key\\ToolboxBitmap32", "$server, $bitmap");
    bare_key(\@own, "$key\\Control");
    bare_key(\@own, "$key\\Implemented Categories\\$_") for @categories;
    entry(\@shared, "$name.1", $class->{description});
    entry(\@shared, "$name.1\\CLSID", $class->{clsid});
    entry(\@shared, $name, $class->{description});
    entry(\@shared, "$name\\CLSID", $class->{clsid});
    entry(\@shared, "$name\\CurVer", "$name.1");
}

my $bitmap = 101;
for my $class (@classes) {
    my $key = "CLSID\\$class->{clsid}";
    entry(\@own, $key, $class->{description});
    entry(\@own, "$key\\InprocServer32", $server);
    entry(\@own, "$key\\InprocServer32", $class->{threadingModel}, 'ThreadingModel');
    add_control($class, $bitmap++) if $class->{progid};
}
while ($idl =~ /uuid\(([0-9A-F-]+)\)[^\]]*\]\s*(disp)?interface (_+Kiv\w+)/g) {
    my ($key, $proxy) = ("Interface\\{$1}", $2 ? $dispatch_proxy : $automation_proxy);
    entry(\@own, $key, $3);
    entry(\@own, "$key\\ProxyStubClsid32", $proxy);
    entry(\@own, "$key\\TypeLib", $library->{tlbid});
    entry(\@own, "$key\\TypeLib", $library->{version}, 'Version');
}
my $type_library = "TypeLib\\$library->{tlbid}\\$library->{version}";
entry(\@own, "$type_library\\0\\win$bits", $server);
entry(\@shared, $type_library, $library_name);
entry(\@shared, "$type_library\\FLAGS", '0');
entry(\@shared, "$type_library\\HELPDIR", '[INSTALLDIR]');

# What the set control remembers for the machine (docs/reference.md) goes with it.
push @own, '<RegistryValue Root="HKLM" Key="SOFTWARE\The Corvale Company\Controls\KivSetDateTime" Name="-" Type="string" Value=""/>';

# --- files -------------------------------------------------------------------------------------------------------------

my @components;

sub identifier { my ($name) = @_; $name =~ s/[^\w.]/_/ga; return $name }

# The server's own component has its registry entries too; another folder's files are a component of their own.
sub folder_content {
    my ($path) = @_;
    opendir my $handle, "$folder/$path" or die "$folder/$path: $!\n";
    my @names = sort grep { !/^\.\.?$/ } readdir $handle;
    my $prefix = $path eq '' ? '' : "$path/";
    my @files = grep { -f "$folder/$prefix$_" } @names;
    my $id = identifier($path eq '' ? 'Server' : "Files_$path");
    my $key_file = $path eq '' ? 'KivDateTime.ocx' : $files[0];
    my $text = '';
    if (@files) {
        push @components, $id;
        $text .= sprintf qq{<Component Id="%s" Guid="%s" Win64="%s">\n}, $id, guid("component $bits $path"), $of_bitness;
        $text .= sprintf qq{<File Id="%s" Name="%s" Source="%s"%s/>\n}, identifier("$prefix$_"), quoted($_),
            quoted("$prefix$_"), $_ eq $key_file ? ' KeyPath="yes"' : ''
            for @files;
        $text .= join "\n", @own, '' if $path eq '';
        $text .= "</Component>\n";
    }
    for my $name (grep { -d "$folder/$prefix$_" } @names) {
        $text .= sprintf qq{<Directory Id="%s" Name="%s">\n%s</Directory>\n}, identifier("Folder_$prefix$name"),
            quoted($name), folder_content("$prefix$name");
    }
    return $text;
}

# What both servers have is one component of both installers: it goes with the second of them. It lies where 32- and
# 64-bit programs see the same keys.
my $content = folder_content('');
$shared[0] =~ s{/>$}{ KeyPath="yes"/>};
push @components, 'Names';
my $names = join "\n", sprintf('<Component Id="Names" Guid="%s" Win64="no">', guid('component names')), @shared,
    '</Component>';
my $references = join "\n", map { qq{<ComponentRef Id="$_"/>} } @components;
my $programs = $wide ? 'ProgramFiles64Folder' : 'ProgramFilesFolder';
my ($product, $upgrade) = (guid("product $bits $version"), guid("every version $bits"));
# wixl draws an identifier for the package by lot whatever stands here; ./package replaces it. A folder of the
# maker above the product's own would stay behind when Wine removes it.
my $package = guid("package $bits $version");
print <<"END";
<?xml version="1.0" encoding="utf-8"?>
<Wix xmlns="http://schemas.microsoft.com/wix/2006/wi">
<Product Id="$product" Name="Kiv Date/Time Controls ($bits-bit)" Language="1033" Version="$version" Manufacturer="The Corvale Company" UpgradeCode="$upgrade">
<Package Id="$package" InstallerVersion="200" Compressed="yes" InstallScope="perMachine" Manufacturer="The Corvale Company" Description="Kiv Date/Time Controls $version ($bits-bit)"/>
<MajorUpgrade DowngradeErrorMessage="A newer version of the Kiv Date/Time Controls is installed already."/>
<Media Id="1" Cabinet="files.cab" EmbedCab="yes"/>
<Property Id="ARPNOMODIFY" Value="1"/>
<Directory Id="TARGETDIR" Name="SourceDir">
<Directory Id="$programs" Name="Programs">
<Directory Id="INSTALLDIR" Name="KivDateTime">
$content$names
</Directory>
</Directory>
</Directory>
<Feature Id="Controls" Level="1" Title="Kiv Date/Time Controls">
$references
</Feature>
</Product>
</Wix>
END
