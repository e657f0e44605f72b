<?xml version="1.0" encoding="UTF-8"?>
<!--
  From a dump of Wickerdeck 3 (wickerdeck.dtd) to a canonical dump. docs/agents.md has the table of
  what becomes what, and what is dropped.

  Attributes that are missing have the meaning that the DTD gives beside them: nothing has filled
  them in. A number that is none ends the translation, because a restore without that limit would
  give everything away.

  What becomes of a name stands in a template of its own and not in a variable that several share: a
  variable made by templates is a document of its own, and a million of them cost more than the rest.
-->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">

  <xsl:output method="xml" encoding="UTF-8" indent="yes"/>

  <xsl:key name="plan" match="plan" use="@id"/>
  <xsl:key name="having" match="site | customer | partner" use="concat(name(), ' ', @plan)"/>

  <xsl:template match="/wickerdeck">
    <migration-dump>
      <xsl:if test="server | plan">
        <server>
          <xsl:apply-templates select="server"/>
          <xsl:if test="plan">
            <account-templates><xsl:apply-templates select="plan"/></account-templates>
          </xsl:if>
        </server>
      </xsl:if>
      <admin>
        <resellers><xsl:apply-templates select="partner"/></resellers>
        <clients><xsl:apply-templates select="customer"/></clients>
        <domains><xsl:apply-templates select="site"/></domains>
      </admin>
    </migration-dump>
  </xsl:template>

  <!-- The server ========================================================================== -->

  <xsl:template match="server">
    <properties>
      <xsl:if test="@host"><hostname><xsl:value-of select="@host"/></hostname></xsl:if>
      <xsl:apply-templates select="address"/>
    </properties>
    <xsl:if test="database-server">
      <db-servers><xsl:apply-templates select="database-server"/></db-servers>
    </xsl:if>
    <xsl:apply-templates select="relay | spamfilter | greylist"/>
  </xsl:template>

  <xsl:template match="server/address" priority="1">
    <system-ip>
      <xsl:call-template name="ip"/>
      <xsl:if test="@mask"><ip-netmask><xsl:value-of select="@mask"/></ip-netmask></xsl:if>
      <xsl:if test="@card"><ip-interface><xsl:value-of select="@card"/></ip-interface></xsl:if>
    </system-ip>
  </xsl:template>

  <xsl:template match="database-server">
    <db-server type="{@kind}">
      <host><xsl:value-of select="@host"/></host>
      <xsl:if test="@port"><port><xsl:value-of select="@port"/></port></xsl:if>
      <db-admin name="{@user}"><xsl:apply-templates select="secret"/></db-admin>
    </db-server>
  </xsl:template>

  <!-- Nobody's relay becomes everybody's by a word that is missing. -->
  <xsl:template match="relay">
    <mail-settings relay="auth" smtp-auth="true">
      <xsl:if test="@for = 'nobody'"><xsl:attribute name="relay">closed</xsl:attribute></xsl:if>
      <xsl:if test="@for = 'all'"><xsl:attribute name="relay">open</xsl:attribute></xsl:if>
      <xsl:if test="refuse"><black-list><xsl:apply-templates select="refuse"/></black-list></xsl:if>
      <xsl:if test="accept"><white-list><xsl:apply-templates select="accept"/></white-list></xsl:if>
    </mail-settings>
  </xsl:template>
  <xsl:template match="refuse | accept"><list-item><xsl:value-of select="normalize-space()"/></list-item></xsl:template>

  <xsl:template match="greylist">
    <grey-listing enabled="true">
      <xsl:attribute name="grey-interval"><xsl:apply-templates select="@wait" mode="count"/></xsl:attribute>
      <xsl:if test="accept"><white-list><xsl:apply-templates select="accept"/></white-list></xsl:if>
    </grey-listing>
  </xsl:template>

  <xsl:template match="spamfilter">
    <spamassassin status="serv">
      <xsl:attribute name="hits"><xsl:apply-templates select="@points" mode="count"/></xsl:attribute>
      <xsl:if test="@mark"><xsl:attribute name="subj-text"><xsl:value-of select="@mark"/></xsl:attribute></xsl:if>
    </spamassassin>
  </xsl:template>

  <!-- A template for each kind of those who have the plan; of one that nobody has yet, for sites. -->
  <xsl:template match="plan">
    <xsl:if test="key('having', concat('site ', @id))
        or not(key('having', concat('customer ', @id)) | key('having', concat('partner ', @id)))">
      <domain-template><xsl:call-template name="items"/></domain-template>
    </xsl:if>
    <xsl:if test="key('having', concat('customer ', @id))">
      <client-template><xsl:call-template name="items"/><xsl:call-template name="rights"/></client-template>
    </xsl:if>
    <xsl:if test="key('having', concat('partner ', @id))">
      <reseller-template><xsl:call-template name="items"/><xsl:call-template name="rights"/></reseller-template>
    </xsl:if>
  </xsl:template>

  <xsl:template name="items">
    <xsl:attribute name="name">
      <xsl:value-of select="@title"/><xsl:if test="not(@title)"><xsl:value-of select="@id"/></xsl:if>
    </xsl:attribute>
    <xsl:for-each select="quota[@of != 'processes']">
      <template-item><xsl:apply-templates select="." mode="named"/></template-item>
    </xsl:for-each>
  </xsl:template>

  <xsl:template name="rights">
    <xsl:for-each select="right[@to != 'game-servers' and @to != 'many-sessions']">
      <template-item>
        <xsl:apply-templates select="." mode="named"/>
        <xsl:value-of select="not(@granted = 'no')"/>
      </template-item>
    </xsl:for-each>
  </xsl:template>

  <!-- Accounts ============================================================================ -->

  <xsl:template match="partner">
    <reseller>
      <xsl:call-template name="account"/>
      <clients><xsl:apply-templates select="customer"/></clients>
    </reseller>
  </xsl:template>

  <xsl:template match="customer">
    <client><xsl:call-template name="account"/></client>
  </xsl:template>

  <xsl:template name="account">
    <xsl:attribute name="name"><xsl:value-of select="@login"/></xsl:attribute>
    <xsl:attribute name="contact"><xsl:value-of select="normalize-space(person/name)"/></xsl:attribute>
    <xsl:apply-templates select="@uuid | @opened"/>
    <preferences><xsl:apply-templates select="person/*[normalize-space()]"/></preferences>
    <properties>
      <xsl:apply-templates select="secret"/>
      <xsl:call-template name="status"/>
    </properties>
    <limits-and-permissions>
      <xsl:call-template name="limits"/>
      <xsl:apply-templates select="right"/>
      <xsl:apply-templates select="key('plan', @plan)/right[not(@to = current()/right/@to)]"/>
    </limits-and-permissions>
    <ip_pool><xsl:apply-templates select="address"/></ip_pool>
    <xsl:call-template name="traffic"/>
    <domains><xsl:apply-templates select="site"/></domains>
  </xsl:template>

  <!-- Sites =============================================================================== -->

  <xsl:template match="site">
    <domain name="{@name}" www="{not(@www = 'no')}">
      <xsl:apply-templates select="@uuid | @opened"/>
      <properties>
        <xsl:apply-templates select="address[1] | ../address[1][not(current()/address)]"/>
        <xsl:call-template name="status"/>
        <xsl:if test="soa | record">
          <dns-zone>
            <xsl:apply-templates select="soa[1]/@serial"/>
            <xsl:apply-templates select="soa[1]/@*[name() != 'serial']"/>
            <xsl:apply-templates select="record"/>
          </dns-zone>
        </xsl:if>
      </properties>
      <limits-and-permissions><xsl:call-template name="limits"/></limits-and-permissions>
      <xsl:apply-templates select="keeper | webspace | redirect"/>
      <xsl:if test="mailbox">
        <mailsystem><mailusers><xsl:apply-templates select="mailbox"/></mailusers></mailsystem>
      </xsl:if>
      <xsl:if test="list">
        <maillists><status><enabled/></status><xsl:apply-templates select="list"/></maillists>
      </xsl:if>
      <databases><xsl:apply-templates select="database"/></databases>
      <xsl:call-template name="traffic"/>
    </domain>
  </xsl:template>

  <!-- The rights of a plan are the keeper's. -->
  <xsl:template match="keeper">
    <domainuser contact="{normalize-space(person/name)}" status="{not(@enters = 'no')}">
      <xsl:apply-templates select="secret | right"/>
      <xsl:apply-templates select="key('plan', ../@plan)/right[not(@to = current()/right/@to)]"/>
      <xsl:apply-templates select="person/*[normalize-space()]"/>
    </domainuser>
  </xsl:template>

  <!-- Web space ========================================================================== -->

  <xsl:template match="redirect"><shosting><xsl:value-of select="@to"/></shosting></xsl:template>
  <xsl:template match="redirect[@framed = 'yes']"><fhosting><xsl:value-of select="@to"/></fhosting></xsl:template>

  <xsl:template match="webspace">
    <phosting https="{@secure = 'yes'}" webstat="{not(@statistics = 'no')}">
      <xsl:call-template name="content"/>
      <limits-and-permissions><xsl:call-template name="scripting"/></limits-and-permissions>
      <preferences>
        <sysuser name="{@user}" shell="/bin/false">
          <xsl:if test="@shell"><xsl:attribute name="shell"><xsl:value-of select="@shell"/></xsl:attribute></xsl:if>
          <xsl:apply-templates select="secret"/>
          <xsl:if test="job">
            <cron>
              <xsl:for-each select="job"><xsl:value-of select="concat(@at, ' ', translate(., '&#10;', ' '), '&#10;')"/></xsl:for-each>
            </cron>
          </xsl:if>
        </sysuser>
        <xsl:apply-templates select="lock"/>
      </preferences>
      <subdomains><xsl:apply-templates select="subsite"/></subdomains>
    </phosting>
  </xsl:template>

  <xsl:template match="subsite">
    <subdomain name="{@name}" https="{@secure = 'yes'}">
      <xsl:call-template name="content"/>
      <xsl:call-template name="scripting"/>
    </subdomain>
  </xsl:template>

  <xsl:template match="lock">
    <pdir name="{@folder}" nonssl="true" ssl="{../@secure = 'yes'}">
      <xsl:if test="@title"><xsl:attribute name="title"><xsl:value-of select="@title"/></xsl:attribute></xsl:if>
      <xsl:for-each select="visitor">
        <pduser name="{@name}"><xsl:apply-templates select="secret"/></pduser>
      </xsl:for-each>
    </pdir>
  </xsl:template>

  <!-- What is not named may not run. -->
  <xsl:template name="scripting">
    <scripting ssi_html="{boolean(engine[@name = 'ssi'])}" php="{boolean(engine[@name = 'php'])}"
               cgi="{boolean(engine[@name = 'cgi'])}" perl="{boolean(engine[@name = 'perl'])}"
               python="{boolean(engine[@name = 'python'])}" ruby="{boolean(engine[@name = 'ruby'])}"/>
  </xsl:template>

  <!-- Without archives the pages stay that the panel makes. -->
  <xsl:template name="content">
    <xsl:if test="files"><content><xsl:apply-templates select="files"/></content></xsl:if>
  </xsl:template>

  <xsl:template match="files[@of = 'pages']"><cid type="docroot"><xsl:call-template name="archive"/></cid></xsl:template>
  <xsl:template match="files[@of = 'secure-pages']"><cid type="docroot_ssl"><xsl:call-template name="archive"/></cid></xsl:template>
  <xsl:template match="files[@of = 'programs']"><cid type="cgi"><xsl:call-template name="archive"/></cid></xsl:template>
  <xsl:template match="webspace/files[@of = 'errors']"><cid type="error_docs"><xsl:call-template name="archive"/></cid></xsl:template>
  <xsl:template match="webspace/files[@of = 'logs']"><cid type="logs"><xsl:call-template name="archive"/></cid></xsl:template>
  <xsl:template match="files"/>

  <!-- The directory and the name of an archive stand apart. -->
  <xsl:template name="archive">
    <xsl:param name="directory"/>
    <xsl:param name="rest" select="@archive"/>
    <xsl:choose>
      <xsl:when test="contains($rest, '/')">
        <xsl:call-template name="archive">
          <xsl:with-param name="directory" select="concat($directory, '/', substring-before($rest, '/'))"/>
          <xsl:with-param name="rest" select="substring-after($rest, '/')"/>
        </xsl:call-template>
      </xsl:when>
      <xsl:otherwise>
        <xsl:attribute name="path"><xsl:value-of select="substring($directory, 2)"/></xsl:attribute>
        <content-file><xsl:value-of select="$rest"/></content-file>
      </xsl:otherwise>
    </xsl:choose>
  </xsl:template>

  <!-- Mail and databases ================================================================== -->

  <!-- A redirection leads to one address, a group to many. -->
  <xsl:template match="mailbox">
    <mailuser name="{@local}">
      <xsl:if test="quota[@of = 'mailbox-size']">
        <xsl:attribute name="mailbox-quota"><xsl:apply-templates select="quota[@of = 'mailbox-size'][1]/@amount" mode="size"/></xsl:attribute>
      </xsl:if>
      <xsl:if test="forward[2]"><xsl:attribute name="mailgroup-enabled">true</xsl:attribute></xsl:if>
      <xsl:apply-templates select="secret"/>
      <preferences>
        <mailbox enabled="{not(@keeps = 'no')}" type="mbox">
          <xsl:if test="@archive">
            <content><cid type="mailbox_inbox"><xsl:call-template name="archive"/></cid></content>
          </xsl:if>
        </mailbox>
        <xsl:apply-templates select="alias | forward | answer[1]"/>
      </preferences>
    </mailuser>
  </xsl:template>

  <xsl:template match="alias"><alias><xsl:value-of select="normalize-space()"/></alias></xsl:template>
  <xsl:template match="forward"><redirect><xsl:value-of select="normalize-space()"/></redirect></xsl:template>
  <xsl:template match="forward[../forward[2]]"><mailgroup-member><xsl:value-of select="normalize-space()"/></mailgroup-member></xsl:template>

  <xsl:template match="answer">
    <autoresponders enabled="{not(@sent = 'no')}">
      <autoresponder name="answer">
        <xsl:if test="@subject"><xsl:attribute name="subject"><xsl:value-of select="@subject"/></xsl:attribute></xsl:if>
        <text charset="UTF-8"><xsl:value-of select="translate(., ' &#9;&#10;&#13;', '')"/></text>
      </autoresponder>
    </autoresponders>
  </xsl:template>

  <xsl:template match="list">
    <maillist name="{@name}">
      <owner><xsl:value-of select="@owner"/></owner>
      <xsl:for-each select="member"><recipient><xsl:value-of select="normalize-space()"/></recipient></xsl:for-each>
      <xsl:apply-templates select="secret"/>
      <status>
        <xsl:choose>
          <xsl:when test="@open = 'no'"><disabled-by name="domadm"/></xsl:when>
          <xsl:otherwise><enabled/></xsl:otherwise>
        </xsl:choose>
      </status>
    </maillist>
  </xsl:template>

  <!-- A bare file of SQL is no tar file, which the restore could read. -->
  <xsl:template match="database">
    <xsl:variable name="tail" select="substring(@archive, string-length(@archive) - 3)"/>
    <xsl:variable name="packed" select="$tail = '.tar' or $tail = '.tgz'"/>
    <xsl:if test="@archive and not($packed)">
      <xsl:message><xsl:value-of select="concat('Left out: rows of database ', @name, ' of ', ../@name, ' in &quot;', @archive, '&quot;')"/></xsl:message>
    </xsl:if>
    <database name="{@name}" type="mysql">
      <xsl:if test="@server"><xsl:attribute name="version"><xsl:value-of select="@server"/></xsl:attribute></xsl:if>
      <xsl:if test="@charset"><xsl:attribute name="charset"><xsl:value-of select="@charset"/></xsl:attribute></xsl:if>
      <xsl:if test="@user"><dbuser name="{@user}"><xsl:apply-templates select="secret"/></dbuser></xsl:if>
      <xsl:if test="$packed"><content><cid type="sqldump"><xsl:call-template name="archive"/></cid></content></xsl:if>
    </database>
  </xsl:template>

  <!-- DNS ================================================================================= -->

  <xsl:template match="soa/@serial"><xsl:attribute name="serial-format">timestamp</xsl:attribute></xsl:template>
  <xsl:template match="soa/@serial[. = 'date']" priority="1"><xsl:attribute name="serial-format">YYYYMMDDNN</xsl:attribute></xsl:template>
  <xsl:template match="soa/@*" priority="-0.25">
    <dns-zone-param name="{name()}" unit="second">
      <xsl:attribute name="value"><xsl:apply-templates select="." mode="count"/></xsl:attribute>
    </dns-zone-param>
  </xsl:template>

  <xsl:template match="record[@type = 'A' or @type = 'NS' or @type = 'CNAME' or @type = 'TXT']">
    <dnsrec type="{@type}" dst="{@value}"><xsl:call-template name="host"/></dnsrec>
  </xsl:template>
  <!-- 10 mx.example. -->
  <xsl:template match="record[@type = 'MX']">
    <xsl:variable name="value" select="normalize-space(@value)"/>
    <dnsrec type="MX" dst="{substring-after($value, ' ')}" opt="{substring-before($value, ' ')}"><xsl:call-template name="host"/></dnsrec>
  </xsl:template>
  <!-- 0 5 5060 sip.example. -->
  <xsl:template match="record[@type = 'SRV']">
    <xsl:variable name="value" select="normalize-space(@value)"/>
    <xsl:variable name="target" select="substring-after(substring-after(substring-after($value, ' '), ' '), ' ')"/>
    <dnsrec type="SRV" dst="{$target}" opt="{substring($value, 1, string-length($value) - string-length($target) - 1)}"><xsl:call-template name="host"/></dnsrec>
  </xsl:template>
  <!-- The panel is given all records of a zone in one list, which commas and semicolons divide: one
       record that does not fit would cost them all. -->
  <xsl:template priority="1" match="record[contains(concat(@host, @value), ',') or contains(concat(@host, @value), ';')]
    | record[@type = 'MX'][not(contains(normalize-space(@value), ' '))]
    | record[@type = 'SRV'][not(contains(substring-after(substring-after(normalize-space(@value), ' '), ' '), ' '))]">
    <xsl:message><xsl:value-of select="concat('Left out: record ', @type, ' ', @host, ' of ', ../@name, ' &quot;', @value, '&quot;')"/></xsl:message>
  </xsl:template>
  <xsl:template match="record"/>

  <xsl:template name="host">
    <xsl:attribute name="src">
      <xsl:if test="not(@host = '@')"><xsl:value-of select="concat(@host, '.')"/></xsl:if>
      <xsl:value-of select="concat(../@name, '.')"/>
    </xsl:attribute>
  </xsl:template>

  <!-- What they share ===================================================================== -->

  <xsl:template match="@uuid"><xsl:attribute name="guid"><xsl:value-of select="."/></xsl:attribute></xsl:template>
  <xsl:template match="@opened">
    <xsl:attribute name="cr-date"><xsl:value-of select="substring(., 1, 10)"/></xsl:attribute>
  </xsl:template>

  <xsl:template name="status">
    <status>
      <xsl:choose>
        <xsl:when test="@state = 'closed-by-operator'"><disabled-by name="admin"/></xsl:when>
        <xsl:when test="@state = 'closed-by-partner'"><disabled-by name="reseller"/></xsl:when>
        <xsl:when test="@state = 'closed-by-customer'"><disabled-by name="client"/></xsl:when>
        <xsl:otherwise><enabled/></xsl:otherwise>
      </xsl:choose>
    </status>
  </xsl:template>

  <xsl:template match="secret">
    <password type="plain"><xsl:value-of select="."/></password>
  </xsl:template>
  <xsl:template match="secret[@form = 'base64']">
    <password type="plain" encoding="base64"><xsl:value-of select="normalize-space()"/></password>
  </xsl:template>
  <xsl:template match="secret[@form = 'crypt']">
    <password type="encrypted"><xsl:value-of select="normalize-space()"/></password>
  </xsl:template>

  <xsl:template match="address" name="ip">
    <ip>
      <ip-address><xsl:value-of select="@ip"/></ip-address>
      <ip-type>
        <xsl:choose>
          <xsl:when test="@use = 'own'">exclusive</xsl:when>
          <xsl:otherwise>shared</xsl:otherwise>
        </xsl:choose>
      </ip-type>
    </ip>
  </xsl:template>

  <!-- A day's row: date, service, bytes in, bytes out. -->
  <xsl:template name="traffic">
    <xsl:if test="usage">
      <traffic>
        <xsl:for-each select="usage">
          <xsl:value-of select="concat(@day, '&#9;', @of, '&#9;', @in, '&#9;', @out, '&#10;')"/>
        </xsl:for-each>
      </traffic>
    </xsl:if>
  </xsl:template>

  <!-- Contact data. A name that stands in no template is dropped. ============================ -->

  <xsl:template match="mail"><pinfo name="email"><xsl:value-of select="normalize-space()"/></pinfo></xsl:template>
  <xsl:template match="firm"><pinfo name="company"><xsl:value-of select="normalize-space()"/></pinfo></xsl:template>
  <xsl:template match="phone"><pinfo name="phone"><xsl:value-of select="normalize-space()"/></pinfo></xsl:template>
  <xsl:template match="fax"><pinfo name="fax"><xsl:value-of select="normalize-space()"/></pinfo></xsl:template>
  <xsl:template match="street"><pinfo name="address"><xsl:value-of select="normalize-space()"/></pinfo></xsl:template>
  <xsl:template match="town"><pinfo name="city"><xsl:value-of select="normalize-space()"/></pinfo></xsl:template>
  <xsl:template match="region"><pinfo name="state"><xsl:value-of select="normalize-space()"/></pinfo></xsl:template>
  <xsl:template match="postcode"><pinfo name="zip"><xsl:value-of select="normalize-space()"/></pinfo></xsl:template>
  <xsl:template match="country"><pinfo name="country"><xsl:value-of select="normalize-space()"/></pinfo></xsl:template>
  <xsl:template match="language"><pinfo name="locale"><xsl:value-of select="normalize-space()"/></pinfo></xsl:template>
  <xsl:template match="person/*" priority="-0.25"/>

  <!-- Rights ============================================================================== -->

  <xsl:template mode="named" match="right[@to = 'make-customers']"><xsl:attribute name="name">create_clients</xsl:attribute></xsl:template>
  <xsl:template mode="named" match="right[@to = 'make-sites']"><xsl:attribute name="name">create_domains</xsl:attribute></xsl:template>
  <xsl:template mode="named" match="right[@to = 'oversell']"><xsl:attribute name="name">allow_oversell</xsl:attribute></xsl:template>
  <xsl:template mode="named" match="right[@to = 'hosting']"><xsl:attribute name="name">manage_phosting</xsl:attribute></xsl:template>
  <xsl:template mode="named" match="right[@to = 'dns']"><xsl:attribute name="name">manage_dns</xsl:attribute></xsl:template>
  <xsl:template mode="named" match="right[@to = 'logs']"><xsl:attribute name="name">manage_log</xsl:attribute></xsl:template>
  <xsl:template mode="named" match="right[@to = 'cron']"><xsl:attribute name="name">manage_crontab</xsl:attribute></xsl:template>
  <xsl:template mode="named" match="right[@to = 'shell']"><xsl:attribute name="name">manage_sh_access</xsl:attribute></xsl:template>
  <xsl:template mode="named" match="right[@to = 'many-sessions']"><xsl:attribute name="name">multiple-sessions</xsl:attribute></xsl:template>
  <xsl:template match="right">
    <permission>
      <xsl:apply-templates select="." mode="named"/>
      <xsl:attribute name="value"><xsl:value-of select="not(@granted = 'no')"/></xsl:attribute>
    </permission>
  </xsl:template>
  <xsl:template match="right[@to = 'game-servers']"/>

  <!-- Limits ============================================================================== -->

  <xsl:template name="limits">
    <xsl:apply-templates select="quota"/>
    <xsl:apply-templates select="key('plan', @plan)/quota[not(@of = current()/quota/@of)]"/>
    <xsl:apply-templates select="@closes"/>
  </xsl:template>

  <xsl:template mode="named" match="quota[@of = 'disk']"><xsl:attribute name="name">disk_space</xsl:attribute><xsl:apply-templates select="@amount" mode="size"/></xsl:template>
  <xsl:template mode="named" match="quota[@of = 'disk-warning']"><xsl:attribute name="name">disk_space_soft</xsl:attribute><xsl:apply-templates select="@amount" mode="size"/></xsl:template>
  <xsl:template mode="named" match="quota[@of = 'traffic']"><xsl:attribute name="name">max_traffic</xsl:attribute><xsl:apply-templates select="@amount" mode="size"/></xsl:template>
  <xsl:template mode="named" match="quota[@of = 'traffic-warning']"><xsl:attribute name="name">max_traffic_soft</xsl:attribute><xsl:apply-templates select="@amount" mode="size"/></xsl:template>
  <xsl:template mode="named" match="quota[@of = 'mailbox-size']"><xsl:attribute name="name">mbox_quota</xsl:attribute><xsl:apply-templates select="@amount" mode="size"/></xsl:template>
  <xsl:template mode="named" match="quota[@of = 'mailboxes']"><xsl:attribute name="name">max_box</xsl:attribute><xsl:apply-templates select="@amount" mode="count"/></xsl:template>
  <xsl:template mode="named" match="quota[@of = 'databases']"><xsl:attribute name="name">max_db</xsl:attribute><xsl:apply-templates select="@amount" mode="count"/></xsl:template>
  <xsl:template mode="named" match="quota[@of = 'lists']"><xsl:attribute name="name">max_maillists</xsl:attribute><xsl:apply-templates select="@amount" mode="count"/></xsl:template>
  <xsl:template mode="named" match="quota[@of = 'sites']"><xsl:attribute name="name">max_dom</xsl:attribute><xsl:apply-templates select="@amount" mode="count"/></xsl:template>
  <xsl:template mode="named" match="quota[@of = 'customers']"><xsl:attribute name="name">max_cl</xsl:attribute><xsl:apply-templates select="@amount" mode="count"/></xsl:template>
  <xsl:template match="quota"><limit><xsl:apply-templates select="." mode="named"/></limit></xsl:template>
  <xsl:template match="quota[@of = 'processes']"/>
  <xsl:template match="@closes"><limit name="expiration"><xsl:apply-templates select="." mode="count"/></limit></xsl:template>

  <!-- Sizes are given in units, the rest is counted. -->
  <xsl:template mode="count" match="@*">
    <xsl:call-template name="number"><xsl:with-param name="value" select="."/></xsl:call-template>
  </xsl:template>
  <xsl:template mode="size" match="@*">
    <xsl:call-template name="number"><xsl:with-param name="value" select=". * 1048576"/></xsl:call-template>
  </xsl:template>
  <xsl:template mode="size" match="quota[@unit = 'B']/@*">
    <xsl:call-template name="number"><xsl:with-param name="value" select="."/></xsl:call-template>
  </xsl:template>
  <xsl:template mode="size" match="quota[@unit = 'KB']/@*">
    <xsl:call-template name="number"><xsl:with-param name="value" select=". * 1024"/></xsl:call-template>
  </xsl:template>
  <xsl:template mode="size" match="quota[@unit = 'GB']/@*">
    <xsl:call-template name="number"><xsl:with-param name="value" select=". * 1073741824"/></xsl:call-template>
  </xsl:template>
  <xsl:template mode="size" match="quota/@*[. = 'unlimited']" priority="1">-1</xsl:template>
  <xsl:template mode="count" match="quota/@*[. = 'unlimited']" priority="1">-1</xsl:template>

  <!-- A whole number in decimal digits; XPath writes big ones with an exponent. Below 2^53 they are
       exact; of a fraction no more counts than was sold. -->
  <xsl:template name="number">
    <xsl:param name="value"/>
    <xsl:if test="not($value &gt;= 0 and $value &lt; 9007199254740992)">
      <xsl:message terminate="yes">
        <xsl:value-of select="concat('Not an amount: ', name(..), ' ', ../@of, ' &quot;', ., '&quot;')"/>
      </xsl:message>
    </xsl:if>
    <xsl:value-of select="format-number(floor($value), '0')"/>
  </xsl:template>

</xsl:stylesheet>
